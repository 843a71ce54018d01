// The settings that a game file brings with it: size of the board and number of life stones.
#pragma once

#include "config/glob_cfg.h"

struct BoardSettings {
    int XDim = 0;
    int YDim = 0;
    int LifeStones = 0;

    bool operator==(const BoardSettings&) const = default;
};

// The board of every game file that does not name another one.
inline constexpr BoardSettings DEFAULT_BOARD = {11, 5, 3};

[[nodiscard]] inline BoardSettings GetBoardSettings() {
    return {GlobCfg.BoardXDim, GlobCfg.BoardYDim, GlobCfg.NumLifeStones};
}

inline void SetBoardSettings(const BoardSettings& settings) {
    GlobCfg.BoardXDim = settings.XDim;
    GlobCfg.BoardYDim = settings.YDim;
    GlobCfg.NumLifeStones = settings.LifeStones;
}
