// A game as pages see it, in a folder of its own, with all that pages were told.
#pragma once

#include <filesystem>
#include <memory>
#include <string>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "common/board_text.h"
#include "common/scratch_folder.h"
#include "config/glob_cfg.h"
#include "page/page_lines.h"
#include "support/output.h"

class PageGameTest : public testing::Test {
protected:
    void Begin(int columns, int rows) {
        UseBoard(columns, rows);
        GlobCfg.NumHumanPlayers = 2;
        game_->Tell = [this](const PageNews& news, GameState state) {
            AddNews(all_, news);
            state_ = state;
        };
        CatchOutput(*game_);
        CatchErrors(*game_);
        BeginKeeping(game_->Kept, [](const std::string&) { return true; });
        BeginPageGame(*game_);
    }

    void SetUp() override { std::filesystem::current_path(folder_.Path()); }

    void TearDown() override {
        SetOutputSinks({});
        std::filesystem::current_path(before_);
    }

    void Ask(const PageRequest& request) { CarryOut(*game_, request); }
    void Type(const std::string& line, RequestKind kind = RequestKind::Line) {
        Ask({.Kind = kind, .Text = line});
    }
    [[nodiscard]] nlohmann::json State() const { return nlohmann::json::parse(all_.State); }
    [[nodiscard]] const PlayState& Play() const { return game_->Game.Play; }

    ScratchFolder folder_;
    std::filesystem::path before_ = std::filesystem::current_path();
    std::unique_ptr<PageGame> game_ = std::make_unique<PageGame>();
    PageNews all_;
    GameState state_ = GameState::Ended;
};
