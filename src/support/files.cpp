#include "support/files.h"

#include <cstring>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "support/fatal.h"
#include "support/output.h"

void PrintFileOpenError(const std::string& path, const char* accessMode) {
    Print("FileOpen: error: opening file (%s) with AccessMode (%s) failed !\n", path.c_str(),
          accessMode);
}

int FileOpen(const std::string& path, std::FILE*& file, const char* accessMode) {
    file = std::fopen(path.c_str(), accessMode);
    if (file == nullptr) {
        PrintFileOpenError(path, accessMode);
        return 1;
    }
    return 0;
}

int FileOpenToRead(const std::string& path, std::FILE*& file) {
    return FileOpen(path, file, FILE_READ_MODE);
}

int FileOpenToWrite(const std::string& path, std::FILE*& file) {
    return FileOpen(path, file, FILE_WRITE_MODE);
}

int FileClose(std::FILE* file) {
    if (std::fclose(file) != 0) {
        ErrorExit("FileClose: error: closing of file failed !\n");
    }
    return 0;
}

int FileReadLine(int maxLength, std::string& line, std::FILE* file) {
    if (!ReadPiece(maxLength, line, file)) {
        return -1;
    }
    const int length = static_cast<int>(line.size());
    if (length == maxLength && line.back() != '\n') {
        ErrorExit("FileReadLine: Error: Input line too long (more than %i chars)\n", maxLength);
    }
    return length;
}

bool ReadPiece(int maxLength, std::string& line, std::FILE* file) {
    line.resize(maxLength + 1);
    if (std::fgets(line.data(), maxLength + 1, file) == nullptr) {
        line.clear();
        return false;
    }
    line.resize(std::strlen(line.c_str()));
    return true;
}

bool FileExists(const std::string& name) {
    struct stat unwanted;
    return lstat(name.c_str(), &unwanted) == 0;
}

void EnsureStandardStreams() {
    for (int descriptor = 0; descriptor <= 2; ++descriptor) {
        if (fcntl(descriptor, F_GETFD) == -1 && open("/dev/null", O_RDWR) != descriptor) {
            _exit(1);  // there is nowhere left to say why
        }
    }
}
