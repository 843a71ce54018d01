// Switching the link to the graphical display on and off: at start-up, by command, and at the end.
#pragma once

// Connects to the display and says whether it worked; `Gui` is set accordingly.
void OpenGui();

// Takes leave of the display and closes the link. Answers false when there was none.
bool CloseGui();
