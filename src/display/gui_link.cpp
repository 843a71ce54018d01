#include "display/gui_link.h"

#include <string_view>

#include "config/glob_cfg.h"
#include "display/gui_socket.h"
#include "support/output.h"

GuiMirror GuiLast;

int OpenGuiLink() {
    const int failed = SocketOpen(GlobCfg.GuiSocket);
    GlobCfg.Gui = failed == 0 ? 1 : 0;
    Print(failed == 0 ? "Connection to GUI successfully established!\n"
                      : "Connection to GUI could not be established!\nGUI is disabled!\n");
    return failed;
}

bool CloseGuiLink() {
    if (GlobCfg.Gui == 0) {
        return false;
    }
    SocketSendString(GlobCfg.GuiSocket, "Q\n");
    SocketClose(GlobCfg.GuiSocket);
    GlobCfg.Gui = 0;
    return true;
}

void GUIPrintPosition(const GameRecord& record, int moveNumber) {
    const std::string update = UpdateText(GuiLast, record, moveNumber);
    // Line by line: a display that has hung up answers the first line with a reset, and so it is
    // missed in this update and not in the next.
    for (std::string_view rest = update; !rest.empty();) {
        const std::string_view line = rest.substr(0, rest.find('\n') + 1);
        rest.remove_prefix(line.size());
        if (SocketSendString(GlobCfg.GuiSocket, line) != 0) {
            SocketClose(GlobCfg.GuiSocket);
            GlobCfg.Gui = 0;
            Print("Connection to GUI was lost!\nGUI is disabled!\n");
            return;
        }
    }
}
