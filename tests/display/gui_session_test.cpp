// A session of the whole program with a display: what was typed, printed and sent to the display is
// recorded in the folder `session`.
#include <string>

#include <gtest/gtest.h>

#include "common/display_peer.h"
#include "common/run_program.h"

namespace {

const std::string SESSION = TALUREX_TESTS "/display/session/";

// The session that the document shows.
std::string DocumentedSession() {
    const std::string document = ReadFile(TALUREX_SOURCE_DIR "/docs/gui-protocol.md");
    const std::size_t begin = document.find("    L -1 -1 0 0\n");
    std::string session = document.substr(begin, document.find("\n\n", begin) + 1 - begin);
    for (std::size_t i = 0; (i = session.find("    ", i)) != std::string::npos;) {
        session.erase(i, 4);
    }
    return session;
}

}  // namespace

TEST(GuiSession, IsTheRecordedOne) {
    DisplayPeer peer;
    const ScratchFolder folder;
    WriteFile(folder.File("stuck.tlx"), ReadFile(SESSION + "stuck.tlx"));
    WriteFile(folder.File("talurex.cfg"),
              ReadFile(SESSION + "talurex.cfg") + "GUI_PORT " + std::to_string(peer.Port) + "\n");
    const ProgramRun run =
        RunProgram({TALUREX_PROGRAM, "-gui"}, ReadFile(SESSION + "input"), folder.Path());
    EXPECT_EQ(run.ExitStatus, 0);
    EXPECT_EQ(run.Errors, "");
    EXPECT_EQ(run.Output, ReadFile(SESSION + "output"));
    for (int connection = 0; connection < 2; ++connection) {
        AcceptConnection(peer);
        ReadToEnd(peer);
    }
    EXPECT_EQ(peer.Received, ReadFile(SESSION + "received"));
    EXPECT_NE(peer.Received.find(DocumentedSession()), std::string::npos);
}
