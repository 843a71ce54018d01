#include "rules/board.h"

#include <cstdlib>

#include "support/numbers.h"

int DirectionOfSigns(int xSign, int ySign) {
    for (int d = 0; d < NUM_DIRECTIONS; ++d) {
        if (xF[d] == xSign && yF[d] == ySign) {
            return d;
        }
    }
    return -1;
}

bool FindWay(int dx, int dy, Way& way) {
    const int xSign = Sign(dx);
    const int ySign = Sign(dy);
    const int direction = DirectionOfSigns(xSign, ySign);
    if (direction < 0 || dx * ySign != dy * xSign) {
        return false;
    }
    way = {direction, Max(std::abs(dx), std::abs(dy))};
    return true;
}

int CornerSize() {
    return (GlobCfg.BoardYDim - 1) / 2;
}

ColumnRange BoardColumns(int y) {
    const int x = GlobCfg.BoardXDim;
    return {Max(0, CornerSize() - y), Min(x, x + GlobCfg.BoardYDim / 2 - y)};
}

int NumBoardSpaces() {
    int count = 0;
    for (int y = 0; y < GlobCfg.BoardYDim; ++y) {
        const ColumnRange columns = BoardColumns(y);
        count += Max(0, columns.End - columns.First);
    }
    return count;
}

bool IsOnBoard(int x, int y) {
    if (!IsInRectangle(x, y)) {
        return false;
    }
    const ColumnRange columns = BoardColumns(y);
    return x >= columns.First && x < columns.End;
}

bool IsInRectangle(int x, int y) {
    return x >= 0 && x < GlobCfg.BoardXDim && y >= 0 && y < GlobCfg.BoardYDim;
}

int CenterDistance(int x, int y) {
    return std::abs(GlobCfg.BoardXDim / 2 - x) + std::abs(GlobCfg.BoardYDim / 2 - y);
}
