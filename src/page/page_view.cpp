#include "page/page_view.h"

#include "config/glob_cfg.h"
#include "rules/referee.h"

PageView ViewOf(const PlayState& play, GameState state) {
    const GameRecord& record = play.Record;
    PageView view;
    view.Shown = ShownPosition(play);
    view.Move = play.CurrentMove;
    view.LastMove = record.LastMove;
    if (GlobCfg.GuiHighlighting != 0 && view.Move > 0) {
        view.Last = LastStep(record, view.Move);
        view.Next = NextStep(record, view.Move);
    }
    view.Running = GlobCfg.GameRunFlag == 1;
    view.IsLastOver = IsEndPosition(record.PositionList[record.LastMove]);
    view.ComputerSide = play.ComputerSide;
    view.State = state;
    return view;
}
