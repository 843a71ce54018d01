// The connection to a graphical display: one that is not there, goes away or is slow.
#include "display/gui_link.h"

#include <csignal>
#include <filesystem>
#include <memory>
#include <thread>

#include <gtest/gtest.h>

#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/socket.h>
#include <sys/time.h>

#include "common/captured.h"
#include "common/display_peer.h"
#include "common/random_games.h"
#include "display/gui_socket.h"

namespace {

int OpenDescriptors() {
    return static_cast<int>(
        std::ranges::distance(std::filesystem::directory_iterator("/proc/self/fd")));
}

// The beginning of a game on the largest board.
class GuiLinkTest : public testing::Test {
protected:
    void SetUp() override {
        SetDefaultConfiguration();
        SetBoardSettings({MAX_BOARD_X_DIM, MAX_BOARD_Y_DIM, 3});
        GuiLast = {};
        std::mt19937 random(7);
        GenerateEmptyStartPosition(Record->PositionList[0]);
        PlayRandomGame(random, 6, *Record);
    }
    void TearDown() override { CloseGuiLink(); }

    void Connect(DisplayPeer& peer) {
        GlobCfg.GuiPort = peer.Port;
        EXPECT_EQ(StdoutOf([] { OpenGuiLink(); }), "Connection to GUI successfully established!\n");
        AcceptConnection(peer);
    }

    std::unique_ptr<GameRecord> Record = std::make_unique<GameRecord>();
};

TEST_F(GuiLinkTest, NobodyListens) {
    const ClosedPort closed;
    GlobCfg.GuiPort = closed.Port;
    const int before = OpenDescriptors();
    GlobCfg.Gui = 1;
    std::string printed;
    EXPECT_EQ(StderrOf([&] { printed = StdoutOf([] { OpenGuiLink(); }); }),
              "Socket connection to gui failed!\n");
    EXPECT_EQ(printed, "Connection to GUI could not be established!\nGUI is disabled!\n");
    EXPECT_EQ(GlobCfg.Gui, 0);
    EXPECT_EQ(OpenDescriptors(), before);
}

TEST_F(GuiLinkTest, NoLineWaitsForTheAnswerToAnother) {
    DisplayPeer peer;
    Connect(peer);
    int isOn = 0;
    socklen_t length = sizeof isOn;
    getsockopt(GlobCfg.GuiSocket, IPPROTO_TCP, TCP_NODELAY, &isOn, &length);
    EXPECT_EQ(isOn, 1);
}

TEST_F(GuiLinkTest, DisplayThatClosesAtOnceAndComesBack) {
    DisplayPeer peer;
    const int before = OpenDescriptors();
    Connect(peer);
    HangUp(peer);
    EXPECT_EQ(StdoutOf([&] {
                  for (int i = 0; i < 1000 && GlobCfg.Gui != 0; ++i) {
                      GUIPrintPosition(*Record, 2);
                  }
              }),
              "Connection to GUI was lost!\nGUI is disabled!\n");
    EXPECT_EQ(OpenDescriptors(), before);
    // The next update builds on what the display would have been sent.
    GuiMirror mirror = GuiLast;
    const std::string next = UpdateText(mirror, *Record, 3);
    Connect(peer);
    GUIPrintPosition(*Record, 3);
    EXPECT_EQ(ReadUpdate(peer), next);
    EXPECT_EQ(next.find("\nM "), std::string::npos);
    EXPECT_EQ(std::count(next.begin(), next.end(), '\n'), 5);  // L, N, one S, T and D
}

TEST_F(GuiLinkTest, FarewellToADisplayThatIsGonePrintsNothing) {
    DisplayPeer peer;
    Connect(peer);
    HangUp(peer);
    SocketSendString(GlobCfg.GuiSocket, "x");  // the answer to this breaks the connection
    std::string printed;
    EXPECT_EQ(StderrOf([&] { printed = StdoutOf([] { CloseGuiLink(); }); }), "");
    EXPECT_EQ(printed, "");
    EXPECT_EQ(GlobCfg.Gui, 0);
}

// Interrupts system calls every fifth of a millisecond, for as long as the record lives.
struct Interruptions {
    Interruptions() {
        struct sigaction action {};
        action.sa_handler = [](int) {};
        sigaction(SIGALRM, &action, nullptr);
        const itimerval timer = {{0, 200}, {0, 200}};
        setitimer(ITIMER_REAL, &timer, nullptr);
    }
    ~Interruptions() {
        const itimerval none = {};
        setitimer(ITIMER_REAL, &none, nullptr);
        std::signal(SIGALRM, SIG_DFL);
    }
};

// A display that reads byte by byte makes every write wait, and signals cut the writes short.
TEST_F(GuiLinkTest, SlowDisplayLosesNoLine) {
    constexpr int NUM_UPDATES = 100;
    DisplayPeer peer(1);
    Connect(peer);
    const int size = 1;
    setsockopt(GlobCfg.GuiSocket, SOL_SOCKET, SO_SNDBUF, &size, sizeof size);
    sigset_t alarms;
    sigemptyset(&alarms);
    sigaddset(&alarms, SIGALRM);
    pthread_sigmask(SIG_BLOCK, &alarms, nullptr);
    std::thread display([&] {
        for (int i = 0; i < NUM_UPDATES; ++i) {
            ReadUpdate(peer);
        }
        ReadToEnd(peer);
    });
    pthread_sigmask(SIG_UNBLOCK, &alarms, nullptr);
    std::string expected;
    GuiMirror mirror;
    std::string longText;  // too long for one write
    for (int i = 0; i < 50000; ++i) {
        longText += std::to_string(i) + '\n';
    }
    {
        const Interruptions interruptions;
        for (int i = 0; i < NUM_UPDATES; ++i) {
            expected += UpdateText(mirror, *Record, i * 3 % 6);
            GUIPrintPosition(*Record, i * 3 % 6);
        }
        EXPECT_EQ(SocketSendString(GlobCfg.GuiSocket, longText), 0);
    }
    CloseGuiLink();
    display.join();
    EXPECT_TRUE(peer.Received == expected + longText + "Q\n");
}

}  // namespace
