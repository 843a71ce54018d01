// The size of a board and its number of life stones: what a game file brings with it.
#pragma once

// The largest board; it fixes the size of a Position.
inline constexpr int MAX_BOARD_X_DIM = 15;
inline constexpr int MAX_BOARD_Y_DIM = 9;

[[nodiscard]] constexpr bool IsBoardSize(int xDim, int yDim) {
    return xDim >= 1 && xDim <= MAX_BOARD_X_DIM && yDim >= 1 && yDim <= MAX_BOARD_Y_DIM;
}

struct BoardSettings {
    int XDim = 0;
    int YDim = 0;
    int LifeStones = 0;

    bool operator==(const BoardSettings&) const = default;
};

// The board to begin with, and that of every game file that does not name another one.
inline constexpr BoardSettings DEFAULT_BOARD = {11, 5, 3};

// Those of GlobCfg.
[[nodiscard]] BoardSettings GetBoardSettings();
void SetBoardSettings(const BoardSettings& settings);

// For a reader that changes the settings as it goes: puts them back at the end of its life, unless
// they are to stay.
class BoardSettingsGuard {
public:
    BoardSettingsGuard() : before_(GetBoardSettings()) {}
    ~BoardSettingsGuard() {
        if (!keep_) {
            SetBoardSettings(before_);
        }
    }
    BoardSettingsGuard(const BoardSettingsGuard&) = delete;
    BoardSettingsGuard& operator=(const BoardSettingsGuard&) = delete;

    void Keep() { keep_ = true; }

private:
    BoardSettings before_;
    bool keep_ = false;
};
