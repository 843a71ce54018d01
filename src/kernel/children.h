// The children of a node above the leaves, in the order in which they are searched.
#pragma once

#include <array>

#include "kernel/move_order.h"
#include "kernel/static_value.h"

namespace {

// A move of a node and what is known of the position behind it.
template <typename Set>
struct Child {
    Set Dead;  // what dies by the move
    Worth WorthBehind;
    double Value;  // the static value for the side to move there, when HasValue
    Step Played;   // the move
    bool HasValue;
};

template <typename Set>
struct ChildList {
    std::array<Child<Set>, MAX_MOVES> Children;
    std::array<Rank, MAX_MOVES> Ranks;  // for the side that moves at the node
    std::array<int, MAX_MOVES> Order;
};

// Works the value of a child of `board` out.
template <typename Set>
inline void SettleChild(Evaluator<Set>& evaluator, const SearchBoard<Set>& board,
                        Child<Set>& child) {
    if (!child.HasValue) {
        child.Value = StaticValueBehind(evaluator, board, child.Played, child.Dead,
                                        !CanMove(child.WorthBehind));
        child.HasValue = true;
    }
}

// Makes and counts every child of a board that is worth `worth`. Answers their number.
template <typename Set>
int ExpandNode(Evaluator<Set>& evaluator, const SearchBoard<Set>& board, Worth worth,
               ChildList<Set>& list) {
    int count = 0;
    const int opponent = OtherColor(board.ActivePlayer);
    const bool hasChance = evaluator.HasChance();
    ForEachMove(evaluator.Tables, board, worth, [&](const Landing<Set>& landing, const Step& step) {
        Child<Set>& child = list.Children[count];
        child = {.Dead = landing.Dead,
                 .WorthBehind = landing.WorthBehind,
                 .Value = 0.0,
                 .Played = step,
                 .HasValue = false};
        list.Ranks[count] = RankAgainst(landing.WorthBehind, opponent);
        if (hasChance || !CanMove(landing.WorthBehind)) {
            SettleChild(evaluator, board, child);
            list.Ranks[count] = evaluator.Tables.Worths.RankOf(-child.Value);
        }
        ++count;
        return true;
    });
    evaluator.NumEvaluations += count;
    return count;
}

// Whether the first of two children has the higher value.
template <typename Set>
bool IsAbove(Evaluator<Set>& evaluator, const SearchBoard<Set>& board, ChildList<Set>& list, int a,
             int b) {
    const Rank doubt = evaluator.Tables.Worths.Doubt();
    const Rank lead = list.Ranks[b] - list.Ranks[a];
    if (lead > doubt || lead < -doubt) {
        return lead > 0;
    }
    Child<Set>& one = list.Children[a];
    Child<Set>& other = list.Children[b];
    SettleChild(evaluator, board, one);
    SettleChild(evaluator, board, other);
    return one.Value > other.Value;
}

// Finds the child that the order of the moves puts first. Most nodes are cut off by it, and never
// need the others.
template <typename Set>
int FindFirstChild(Evaluator<Set>& evaluator, const SearchBoard<Set>& board, int count,
                   ChildList<Set>& list) {
    Rank best = list.Ranks[0];
    for (int i = 1; i < count; ++i) {
        best = list.Ranks[i] > best ? list.Ranks[i] : best;
    }
    const Rank doubt = evaluator.Tables.Worths.Doubt();
    int first = -1;
    for (int i = 0; i < count; ++i) {
        if (list.Ranks[i] >= best - doubt &&
            (first < 0 || IsAbove(evaluator, board, list, first, i))) {
            first = i;
        }
    }
    return first;
}

// Puts the children in the order in which they are searched.
template <typename Set>
void SortChildren(Evaluator<Set>& evaluator, const SearchBoard<Set>& board, int count,
                  ChildList<Set>& list) {
    SortPositions(count, list.Order.data(),
                  [&](int a, int b) { return IsAbove(evaluator, board, list, a, b); });
}

}  // namespace
