// Where a game that goes on is kept, and that nothing of the user's is lost by it.
#include "gamefiles/kept_game.h"

#include <filesystem>

#include <gtest/gtest.h>

#include "common/board_text.h"
#include "common/scratch_folder.h"

namespace {

namespace fs = std::filesystem;

constexpr const char* GAME = "# phase 1:\nE3  F3\nBREAK\n";

// In a folder of its own.
class KeptGameTest : public testing::Test {
protected:
    void SetUp() override {
        UseBoard(11, 5);
        fs::current_path(folder_.Path());
    }
    void TearDown() override { fs::current_path(before_); }

    // Begins to keep a game, where the claims to some names are refused.
    static KeptGame Begun(const std::string& refused = "") {
        KeptGame kept;
        BeginKeeping(kept, [&](const std::string& name) { return name != refused; });
        return kept;
    }

    ScratchFolder folder_;
    fs::path before_ = fs::current_path();
};

}  // namespace

TEST_F(KeptGameTest, PutsAGameAsideThatItFinds) {
    WriteFile("autosave.tlx", GAME);
    WriteFile("previous.tlx", "older");
    KeptGame kept = Begun();
    EXPECT_EQ(kept.File, "autosave.tlx");
    EXPECT_EQ(ReadFile("previous.tlx"), GAME);
    EXPECT_EQ(ReadFile("previous-2.tlx"), "older");
    KeepText(kept, "text");
    EXPECT_EQ(ReadFile("autosave.tlx"), "text");
}

TEST_F(KeptGameTest, LeavesAloneWhatIsNoGame) {
    const auto expectLeft = [](const char* what) {
        EXPECT_EQ(Begun().File, "autosave-2.tlx") << what;
        EXPECT_FALSE(fs::exists("previous.tlx")) << what;
    };
    WriteFile("autosave.tlx", "a letter\n");
    expectLeft("text");
    WriteFile("autosave.tlx", std::string(300, 'x'));
    expectLeft("a long line");
    WriteFile("autosave.tlx", GAME + std::string(70000, '\n'));
    expectLeft("a large file");
    fs::remove("autosave.tlx");
    fs::create_directory("autosave.tlx");
    expectLeft("a folder");
    fs::remove("autosave.tlx");
    WriteFile("game", GAME);
    fs::create_symlink("game", "autosave.tlx");
    expectLeft("a link");
    EXPECT_EQ(ReadFile("game"), GAME);
    fs::remove("autosave.tlx");
    EXPECT_EQ(Begun("autosave.tlx").File, "autosave-2.tlx");  // another program's
}

TEST_F(KeptGameTest, HoldsTheLatestFew) {
    KeptGame kept = Begun();
    for (int game = 1; game <= MAX_PREVIOUS_GAMES + 2; ++game) {
        KeepText(kept, "game " + std::to_string(game));
        PutGameAside(kept, true);
    }
    EXPECT_EQ(ReadFile("previous.tlx"), "game 7");
    EXPECT_EQ(ReadFile("previous-5.tlx"), "game 3");
    EXPECT_EQ(folder_.NumEntries(), MAX_PREVIOUS_GAMES);
    KeepText(kept, "saved elsewhere");
    PutGameAside(kept, false);
    EXPECT_EQ(folder_.NumEntries(), MAX_PREVIOUS_GAMES);
}

// The last of the older games cannot be written over.
TEST_F(KeptGameTest, WritesOverNothing) {
    for (const char* name :
         {"previous.tlx", "previous-2.tlx", "previous-3.tlx", "previous-4.tlx"}) {
        WriteFile(name, name);
    }
    fs::create_directories("previous-5.tlx/full");
    KeptGame kept = Begun();
    KeepText(kept, "game");
    PutGameAside(kept, true);
    EXPECT_EQ(kept.File, "");
    EXPECT_EQ(ReadFile("autosave.tlx"), "game");
    EXPECT_EQ(ReadFile("previous-4.tlx"), "previous-4.tlx");
    KeepText(kept, "another");
    EXPECT_FALSE(kept.IsUpToDate);
    EXPECT_EQ(ReadFile("autosave.tlx"), "game");
}
