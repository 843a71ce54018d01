#include "config/glob_cfg.h"

GlobalConfiguration GlobCfg;

void SetDefaultConfiguration() {
    GlobCfg.ComputerColor = 1;
    GlobCfg.NumHumanPlayers = 1;
    GlobCfg.ComputerLevel = 5000;
    GlobCfg.SetupMode = 0;
    GlobCfg.BoardXDim = 11;
    GlobCfg.BoardYDim = 5;
    GlobCfg.NumLifeStones = 3;
    GlobCfg.NumWhiteStones = -1;
    GlobCfg.SingleDispCharFlag = 0;
    GlobCfg.SingleDispChar = '*';
    GlobCfg.ConfigFileName = "talurex.cfg";
    GlobCfg.RandomSeed = 0;
    GlobCfg.PrintStatusFlag = 1;
    GlobCfg.GameRunFlag = 1;
    GlobCfg.Special = 0;
    GlobCfg.Gui = 0;
    GlobCfg.GuiPort = 9998;
    GlobCfg.GuiHighlighting = 1;
}
