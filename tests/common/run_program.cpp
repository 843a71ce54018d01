#include "common/run_program.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include "support/fatal.h"

namespace {

void Redirect(const std::string& path, int flags, int descriptor) {
    const int file = open(path.c_str(), flags, 0600);
    if (file == -1 || dup2(file, descriptor) == -1) {
        _exit(126);
    }
    close(file);
}

}  // namespace

TemporaryFolder::TemporaryFolder() {
    std::string name = std::filesystem::temp_directory_path() / "talurex-test-XXXXXX";
    if (mkdtemp(name.data()) == nullptr) {
        ErrorExit("TemporaryFolder: cannot make %s\n", name.c_str());
    }
    Path = name;
}

TemporaryFolder::~TemporaryFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(Path, ignored);
}

void WriteFile(const std::string& path, const std::string& text) {
    std::ofstream file(path, std::ios::binary);
    file << text;
    file.close();
    if (!file) {
        ErrorExit("WriteFile: cannot write %s\n", path.c_str());
    }
}

std::string ReadFile(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    if (!file) {
        ErrorExit("ReadFile: cannot read %s\n", path.c_str());
    }
    return {std::istreambuf_iterator<char>(file), {}};
}

ProgramRun RunProgram(const std::vector<std::string>& command, const std::string& input,
                      const std::string& folder) {
    const TemporaryFolder streams;
    WriteFile(streams.Path + "/in", input);
    std::vector<char*> arguments;
    for (const std::string& word : command) {
        arguments.push_back(const_cast<char*>(word.c_str()));
    }
    arguments.push_back(nullptr);
    const pid_t child = fork();
    if (child == 0) {
        Redirect(streams.Path + "/in", O_RDONLY, 0);
        Redirect(streams.Path + "/out", O_WRONLY | O_CREAT, 1);
        Redirect(streams.Path + "/err", O_WRONLY | O_CREAT, 2);
        if (chdir(folder.c_str()) == 0) {
            execvp(arguments[0], arguments.data());
        }
        _exit(127);
    }
    int status = 0;
    if (child == -1 || waitpid(child, &status, 0) != child) {
        ErrorExit("RunProgram: cannot run %s\n", command[0].c_str());
    }
    return {ReadFile(streams.Path + "/out"), ReadFile(streams.Path + "/err"),
            WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status)};
}
