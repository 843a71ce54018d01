#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "board/board_session.h"
#include "board/private_folder.h"
#include "config/config_file.h"
#include "config/options.h"
#include "support/fatal.h"
#include "support/files.h"
#include "support/numbers.h"

namespace {

constexpr int DISPLAY_PORT = 9998;
constexpr int HIGHEST_PORT = 65535;

struct Arguments {
    int Port = 0;  // 0: one of the system's choosing
    bool Open = true;
    bool Help = false;
    bool Watch = false;
    int WatchPort = DISPLAY_PORT;
    std::vector<std::string> ForTalurex;
};

void PrintHelp() {
    std::fputs("usage: talurex-board [option ...] [talurex option ...]\n"
               "Plays the game in a browser on this machine.\n"
               "\n"
               "  --port=N      the port of the page; one that is free without it\n"
               "  --no-open     do not open the page in the browser\n"
               "  --watch[=N]   show the game of a Talurex that is started elsewhere with -gui,\n"
               "                and is told the display port N (9998)\n"
               "  --help        print this help text\n"
               "\n"
               "Options with one dash are those of talurex; talurex -help lists them.\n",
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
            arguments.ForTalurex.push_back(text);
        } else {
            ExitForArgument(text);
        }
    }
    return arguments;
}

// Answers false when the file cannot be read.
bool ReadWholeFile(const std::string& path, std::string& content) {
    constexpr std::size_t MAX_LENGTH = 1048576;
    std::ifstream file(path, std::ios::binary);
    if (!file) {
        return false;
    }
    std::ostringstream text;
    text << file.rdbuf();
    content = text.str();
    if (content.size() > MAX_LENGTH) {
        ErrorExit("talurex-board: \"%s\" is too long for settings\n", path.c_str());
    }
    return true;
}

// Brings the settings into GlobCfg with which Talurex will start, or ends the program with
// Talurex's own message. Answers the content of the user's configuration file.
std::string ReadSettings(const Arguments& arguments) {
    std::vector<const char*> words = {"talurex-board"};
    for (const std::string& text : arguments.ForTalurex) {
        words.push_back(text.c_str());
    }
    OptionValues options;
    InitOptions(options);
    SetDefaultConfiguration();
    GetOptions(options, static_cast<int>(words.size()), words.data());
    const std::string& named = options[OPTION_CONFIG].Argument;
    const std::string path = named.empty() ? GlobCfg.ConfigFileName : named;
    std::string content;
    if (ReadWholeFile(path, content)) {
        ReadConfigFile(path);
    } else if (!named.empty()) {
        PrintError("Warning! Config file \"%s\" could not be opened! Using default "
                   "configuration!\n",
                   path.c_str());
    }
    ProcessOptions(options);
    return content;
}

// Talurex reads the last of several values, of keys and options alike.
std::vector<std::string> TalurexArguments(const Arguments& arguments, const std::string& config) {
    std::vector<std::string> words = arguments.ForTalurex;
    words.push_back("-config=" + config);
    words.emplace_back("-gui=1");
    return words;
}

// The browser is sent to the page by a file: an address on its command line could be read by all.
void OpenInBrowser(const PrivateFolder& folder, const std::string& address) {
    const char* display = std::getenv("DISPLAY");
    const char* wayland = std::getenv("WAYLAND_DISPLAY");
    if ((display == nullptr || *display == '\0') && (wayland == nullptr || *wayland == '\0')) {
        return;
    }
    const std::string page = "<!DOCTYPE html>\n<title>Talurex</title>\n"
                             "<meta http-equiv=\"refresh\" content=\"0; url=" +
                             address + "\">\n";
    if (!folder.Write("open.html", page) || !StartHelper({"xdg-open", folder.File("open.html")})) {
        PrintError("talurex-board: the browser could not be opened\n");
    }
}

// Answers an empty text, or why there is no game.
std::string StartTalurex(BoardSession& session, const PrivateFolder& folder,
                         const Arguments& arguments, const std::string& settings) {
    std::string error;
    const std::string program = FindTalurex(error);
    if (program.empty()) {
        return "there is no talurex in:" + error;
    }
    const int port = OpenDisplayListener(session.Display, 0, error);
    if (port == 0) {
        return error;
    }
    if (!folder.Write("talurex.cfg", settings + "\nGUI_PORT " + std::to_string(port) + "\n")) {
        return "no file can be written for the settings";
    }
    const std::string copy = folder.File("kept.tlx");
    // Talurex takes a name for a file that is one word.
    if (copy.find_first_of(" \t\n\v\f\r") == std::string::npos && copy.size() < 150) {
        session.Talk.SafeCopy = copy;
    }
    error =
        StartGame(session.Game, program, TalurexArguments(arguments, folder.File("talurex.cfg")));
    return error.empty() ? "" : program + " cannot be started: " + error;
}

void AwaitSignals(BoardSession& session, boost::asio::signal_set& signals) {
    signals.async_wait([&](const boost::system::error_code& failed, int) {
        if (!failed) {
            EndSession(session);
            AwaitSignals(session, signals);
        }
    });
}

// Opens the ports, and starts the game that is not only looked at. Answers an empty text, or what
// is wrong.
std::string OpenBoard(BoardSession& session, const PrivateFolder& folder,
                      const Arguments& arguments, const std::string& settings) {
    std::string error;
    if (OpenWebServer(session.Web, arguments.Port, error) == 0) {
        return error;
    }
    if (arguments.Watch) {
        return OpenDisplayListener(session.Display, arguments.WatchPort, error) == 0 ? error : "";
    }
    return StartTalurex(session, folder, arguments, settings);
}

int RunBoard(const Arguments& arguments) {
    const std::string settings = ReadSettings(arguments);
    const PrivateFolder folder;
    if (!folder.Exists()) {
        PrintError("talurex-board: no folder can be made for temporary files\n");
        return 1;
    }
    boost::asio::io_context context(1);
    BoardSession session(context);
    session.Watching = arguments.Watch;
    BeginSession(session);
    boost::asio::signal_set signals(context, SIGINT, SIGTERM, SIGHUP);
    signals.add(SIGQUIT);
    AwaitSignals(session, signals);
    const std::string error = OpenBoard(session, folder, arguments, settings);
    if (!error.empty()) {
        PrintError("talurex-board: %s\n", error.c_str());
        return 1;
    }
    const std::string address =
        "http://127.0.0.1:" + std::to_string(session.Web.Port) + "/#" + session.Web.Token;
    std::printf("Board: %s\n", address.c_str());
    std::fflush(stdout);
    if (arguments.Open) {
        OpenInBrowser(folder, address);
    }
    context.run();
    return session.ExitStatus;
}

}  // namespace

int main(int count, char** texts) {
    try {
        EnsureStandardStreams();
        std::signal(SIGPIPE, SIG_IGN);
        const Arguments arguments = ReadArguments(count, texts);
        if (arguments.Help) {
            PrintHelp();
            return 0;
        }
        return RunBoard(arguments);
    } catch (const std::exception& fault) {  // where memory or descriptors are short
        PrintError("talurex-board: %s\n", fault.what());
        return 1;
    }
}
