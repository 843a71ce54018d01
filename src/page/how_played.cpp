#include "page/how_played.h"

#include "config/glob_cfg.h"
#include "support/numbers.h"

namespace {

constexpr std::string_view LEAD = "# Board: people ";

std::optional<HowPlayed> ReadLine(std::string_view line) {
    HowPlayed how;
    const auto take = [&](std::string_view lead, int& number) {
        if (!line.starts_with(lead)) {
            return false;
        }
        line.remove_prefix(lead.size());
        const std::optional<int> found = ScanInt(line);
        number = found.value_or(-1);
        return number >= 0;
    };
    const auto takeText = [&](std::string_view text) {
        const bool isThere = line.starts_with(text);
        line.remove_prefix(isThere ? text.size() : 0);
        return isThere;
    };
    if (!take(LEAD, how.People) || how.People > 2 || !takeText(", color ")) {
        return {};
    }
    if (takeText("black")) {
        how.HumanSide = BLACK;
    } else if (!takeText("white")) {
        return {};
    }
    if (!take(", level ", how.Level) || !take(", move ", how.Move)) {
        return {};
    }
    return how;
}

}  // namespace

HowPlayed PresentPlay(const PlayState& play) {
    return {.People = GlobCfg.NumHumanPlayers,
            .HumanSide = OtherColor(play.ComputerSide),
            .Level = GlobCfg.ComputerLevel,
            .Move = play.CurrentMove};
}

std::string RemarkOn(const HowPlayed& how) {
    return std::string(LEAD) + std::to_string(how.People) + ", color " +
           (how.HumanSide == BLACK ? "black" : "white") + ", level " + std::to_string(how.Level) +
           ", move " + std::to_string(how.Move) + '\n';
}

std::optional<HowPlayed> ReadRemark(std::string_view text) {
    const std::size_t place = text.rfind(LEAD);
    return place == text.npos ? std::nullopt : ReadLine(text.substr(place));
}
