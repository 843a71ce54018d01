#include "config/glob_cfg.h"

GlobalConfiguration GlobCfg;

void SetDefaultConfiguration() {
    const int socket = GlobCfg.GuiSocket;
    GlobCfg = {};
    GlobCfg.GuiSocket = socket;
}
