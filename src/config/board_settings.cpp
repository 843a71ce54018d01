#include "config/board_settings.h"

#include "config/glob_cfg.h"

BoardSettings GetBoardSettings() {
    return {GlobCfg.BoardXDim, GlobCfg.BoardYDim, GlobCfg.NumLifeStones};
}

void SetBoardSettings(const BoardSettings& settings) {
    GlobCfg.BoardXDim = settings.XDim;
    GlobCfg.BoardYDim = settings.YDim;
    GlobCfg.NumLifeStones = settings.LifeStones;
}
