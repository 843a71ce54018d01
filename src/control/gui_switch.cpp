#include "control/gui_switch.h"

#include <cstdio>

#include "config/glob_cfg.h"
#include "display/gui_link.h"

void OpenGui() {
    GlobCfg.Gui = 1;
    if (SocketOpen(GlobCfg.GuiSocket) != 0) {
        std::printf("Connection to GUI could not be established!\nGUI is disabled!\n");
        GlobCfg.Gui = 0;
        return;
    }
    std::printf("Connection to GUI successfully established!\n");
}

bool CloseGui() {
    if (GlobCfg.Gui == 0) {
        return false;
    }
    GlobCfg.Gui = 0;
    SocketSendString(GlobCfg.GuiSocket, "Q\n");
    SocketClose(GlobCfg.GuiSocket);
    return true;
}
