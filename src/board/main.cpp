#include <csignal>
#include <cstdio>
#include <exception>
#include <memory>
#include <string>
#include <vector>

#include <boost/asio/signal_set.hpp>

#include "board/board.h"
#include "board/open_page.h"
#include "config/glob_cfg.h"
#include "control/start_up.h"
#include "support/claim.h"
#include "support/fatal.h"
#include "support/files.h"
#include "support/output.h"

namespace {

constexpr int USUAL_PORT = 9997;
constexpr int DISPLAY_PORT = 9998;
constexpr int HIGHEST_PORT = 65535;

struct Arguments {
    int Port = 0;  // 0: the usual one, or any
    bool Open = true;
    bool Help = false;
    bool Watch = false;
    int WatchPort = DISPLAY_PORT;
    std::vector<const char*> ForTalurex = {"talurex-board"};  // behind the program's name
};

void PrintHelp() {
    std::fputs("usage: talurex-board [option ...] [talurex option ...]\n"
               "Plays the game in a browser on this machine.\n"
               "\n"
               "  --port=N      the port of the page; without it 9997 or, if that is taken, any\n"
               "  --no-open     do not open the page in the browser\n"
               "  --watch[=N]   show the game of a Talurex that is started elsewhere with -gui,\n"
               "                and is told the display port N (9998)\n"
               "  --help        print this help text\n"
               "\n"
               "Options with one dash are those of talurex; -help lists them.\n",
               stdout);
}

[[noreturn]] void ExitForArgument(const std::string& argument) {
    ErrorExit(
        "talurex-board: wrong argument \"%s\"; talurex-board --help tells of the right ones\n",
        argument.c_str());
}

// Reads the port behind the '=' of an argument.
int PortOf(const std::string& argument) {
    const std::string text = argument.substr(argument.find('=') + 1);
    const bool digits = !text.empty() && text.size() <= 5 &&
                        text.find_first_not_of("0123456789") == std::string::npos;
    const int port = digits ? std::stoi(text) : 0;
    if (port < 1 || port > HIGHEST_PORT) {
        ExitForArgument(argument);
    }
    return port;
}

Arguments ReadArguments(int count, char** texts) {
    Arguments arguments;
    for (int i = 1; i < count; ++i) {
        const std::string text = texts[i];
        if (text == "--help") {
            arguments.Help = true;
        } else if (text == "--no-open") {
            arguments.Open = false;
        } else if (text == "--watch") {
            arguments.Watch = true;
        } else if (text.starts_with("--watch=")) {
            arguments.Watch = true;
            arguments.WatchPort = PortOf(text);
        } else if (text.starts_with("--port=")) {
            arguments.Port = PortOf(text);
        } else if (text.starts_with('-') && !text.starts_with("--")) {
            arguments.ForTalurex.push_back(texts[i]);
        } else {
            ExitForArgument(text);
        }
    }
    return arguments;
}

// Brings the settings into GlobCfg as the terminal program does. What that prints begins the log of
// the page, or stands here when it ends the program.
void ReadSettings(const Arguments& arguments, PageGame& page, OptionValues& options) {
    CatchOutput(page);
    try {
        ProgramInit(static_cast<int>(arguments.ForTalurex.size()), arguments.ForTalurex.data(),
                    options, page.Game.Weights);
    } catch (const ProgramEnd&) {
        SetOutputSinks({});
        PrintText(page.Log);
        throw;
    }
    if (GlobCfg.Special != 0) {
        ErrorExit("talurex-board: there is no self-play on a page; talurex -special=%i plays it\n",
                  GlobCfg.Special);
    }
}

// Ends the board when a signal asks for it, and once more when the next one does.
void AwaitSignals(Board& board, boost::asio::signal_set& signals) {
    signals.async_wait([&](const boost::system::error_code& failed, int) {
        if (!failed) {
            EndBoard(board);
            AwaitSignals(board, signals);
        }
    });
}

// Listens on the wanted port; without a wish on the usual one, so that the browser finds what it
// keeps for the page again, or on any that is free. Ends the program when that cannot be.
void OpenWeb(WebServer& web, int port) {
    std::string error;
    const bool isOpen =
        port != 0 ? OpenWebServer(web, port, error) != 0
                  : OpenWebServer(web, USUAL_PORT, error) != 0 || OpenWebServer(web, 0, error) != 0;
    if (!isOpen) {
        ErrorExit("talurex-board: %s\n", error.c_str());
    }
}

void BeginPlaying(Board& board, const Arguments& arguments) {
    PageGame& page = board.Game.Page;
    OptionValues options;
    ReadSettings(arguments, page, options);
    if (options[OPTION_HELP].Given) {
        SetOutputSinks({});
        PrintHelp();
        PrintCommandLineHelp("talurex-board");
        throw ProgramEnd{0};
    }
    OpenWeb(board.Web, arguments.Port);
    CatchErrors(page);
    BeginKeeping(page.Kept, ClaimName);
    BeginPlaying(board);
}

void BeginWatching(Board& board, const Arguments& arguments) {
    if (arguments.ForTalurex.size() > 1) {
        ExitForArgument(arguments.ForTalurex[1]);  // the game is another program's
    }
    OpenWeb(board.Web, arguments.Port);
    std::string error;
    if (OpenDisplayListener(board.Display, arguments.WatchPort, error) == 0) {
        ErrorExit("talurex-board: %s\n", error.c_str());
    }
    BeginWatching(board);
}

int RunBoard(int count, char** texts) {
    const Arguments arguments = ReadArguments(count, texts);
    if (arguments.Help) {
        PrintHelp();
        return 0;
    }
    boost::asio::io_context context(1);  // goes last of all, with what still waits in it
    const auto board = std::make_unique<Board>(context);
    boost::asio::signal_set signals(context, SIGINT, SIGTERM, SIGHUP);
    signals.add(SIGQUIT);
    AwaitSignals(*board, signals);
    if (arguments.Watch) {
        BeginWatching(*board, arguments);
    } else {
        BeginPlaying(*board, arguments);
    }
    const std::string address =
        "http://127.0.0.1:" + std::to_string(board->Web.Port) + "/#" + board->Web.Token;
    std::printf("Board: %s\n", address.c_str());
    std::fflush(stdout);
    std::string file;
    if (arguments.Open && !OpenPage(address, file)) {
        std::fputs("talurex-board: the browser could not be opened\n", stderr);
    }
    context.run();
    std::remove(file.c_str());
    return board->Game.ExitStatus;
}

}  // namespace

int main(int count, char** texts) {
    EnsureStandardStreams();
    try {
        return RunBoard(count, texts);
    } catch (const ProgramEnd& end) {
        return end.Status;
    } catch (const std::exception& fault) {  // where memory or descriptors are short
        std::fprintf(stderr, "talurex-board: %s\n", fault.what());
        return 1;
    }
}
