// The Talurex behind the board: a child process on two pipes.
#pragma once

#include <utility>

#include <array>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include <boost/asio/io_context.hpp>
#include <boost/asio/posix/stream_descriptor.hpp>
#include <boost/asio/signal_set.hpp>
#include <sys/types.h>

struct GameProcess {
    explicit GameProcess(boost::asio::io_context& context)
        : Input(context), Output(context), ChildEnded(context, SIGCHLD) {}

    boost::asio::posix::stream_descriptor Input;   // what it reads
    boost::asio::posix::stream_descriptor Output;  // what it prints, errors included
    boost::asio::signal_set ChildEnded;
    pid_t Id = 0;           // 0 when there is none
    std::string Writing;    // is on its way to it
    std::string Unwritten;  // comes next
    std::array<char, 16384> Bytes{};
    bool Awaiting = false;
    bool OutputEnded = false;
    bool Ended = false;
    int Status = 0;

    std::function<void(std::string_view)> OnOutput;  // called once for each AwaitOutput
    // Called once, behind the last output, with the exit status; 128 + n for signal n.
    std::function<void(int)> OnEnd;
};

// Where `talurex` is: beside this program, else on the PATH. Answers an empty text after filling
// `searched` with the places that were looked at.
[[nodiscard]] std::string FindTalurex(std::string& searched);

// Starts the program with the arguments. Answers an empty text, or why it could not be started.
[[nodiscard]] std::string StartGame(GameProcess& game, const std::string& program,
                                    const std::vector<std::string>& arguments);

// Has OnOutput called with the next output, or OnEnd behind the last.
void AwaitOutput(GameProcess& game);

// Writes the bytes to its standard input; they are gone when it has ended.
void WriteToGame(GameProcess& game, std::string_view bytes);

// The end of its input.
void CloseGameInput(GameProcess& game);

// Sends it a signal, if it is still there.
void SignalGame(const GameProcess& game, int number);

// Starts a program that nobody waits for, with nothing on its standard streams. Answers whether it
// was started.
bool StartHelper(const std::vector<std::string>& command);
