// Files.cpp — reading input files whole, writing output files through a
// temporary renamed into place, and checking standard output, all on the
// POSIX calls so that every failure comes with the system's reason.
#include "Files.h"

#include "Commands.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <iostream>

namespace krmwtarn {
namespace {
// Why a document written by printText did not reach standard output.
std::string standardOutputFailure;

bool fail(std::string& reason, int error) {
    reason = std::strerror(error);
    return false;
}

bool writeAll(int fd, const std::string& text, std::string& reason) {
    const char* p = text.data();
    std::size_t left = text.size();
    while (left > 0) {
        ssize_t n = ::write(fd, p, left);
        if (n < 0 && errno == EINTR) continue;
        if (n < 0) return fail(reason, errno);
        p += n;
        left -= static_cast<std::size_t>(n);
    }
    return true;
}

// A device or a pipe named on the command line (/dev/stdout, /dev/full) is
// written as it is: it cannot be replaced by a renamed file.
bool writeInPlace(const std::string& path, const std::string& text, std::string& reason) {
    int fd = ::open(path.c_str(), O_WRONLY | O_TRUNC | O_CLOEXEC);
    if (fd < 0) return fail(reason, errno);
    bool ok = writeAll(fd, text, reason);
    if (::close(fd) != 0 && ok) return fail(reason, errno);
    return ok;
}
}  // namespace

bool readFile(const std::string& path, std::string& text, std::string& reason) {
    const bool standardInput = path == "-";
    int fd = standardInput ? STDIN_FILENO : ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
    if (fd < 0) return fail(reason, errno);
    text.clear();
    char buffer[65536];
    int error = 0;
    for (;;) {
        ssize_t n = ::read(fd, buffer, sizeof buffer);
        if (n < 0 && errno == EINTR) continue;
        if (n < 0) error = errno;
        if (n <= 0) break;
        text.append(buffer, static_cast<std::size_t>(n));
    }
    if (!standardInput) ::close(fd);
    return error ? fail(reason, error) : true;
}

bool writeFile(const std::string& path, const std::string& text, std::string& reason) {
    std::string target = path;
    mode_t mode;
    struct stat existing;
    if (::stat(path.c_str(), &existing) == 0) {
        if (S_ISDIR(existing.st_mode)) return fail(reason, EISDIR);
        if (!S_ISREG(existing.st_mode)) return writeInPlace(path, text, reason);
        // Through a symbolic link the file it names is replaced, not the link.
        if (char* real = ::realpath(path.c_str(), nullptr)) {
            target = real;
            std::free(real);
        }
        mode = existing.st_mode & 07777;
    } else {
        mode_t mask = ::umask(0);
        ::umask(mask);
        mode = 0666 & ~mask;
    }
    std::string temporary = target + ".XXXXXX";  // mkstemp fills in the X's
    int fd = ::mkstemp(temporary.data());
    if (fd < 0) return fail(reason, errno);
    bool ok = ::fchmod(fd, mode) == 0 || fail(reason, errno);
    ok = ok && writeAll(fd, text, reason);
    ok = ok && (::fsync(fd) == 0 || fail(reason, errno));
    if (::close(fd) != 0 && ok) ok = fail(reason, errno);
    ok = ok && (::rename(temporary.c_str(), target.c_str()) == 0 || fail(reason, errno));
    if (!ok) ::unlink(temporary.c_str());
    return ok;
}

int writeResult(const char* command, const std::string& file, const std::string& text) {
    if (file == "-") {
        printText(text);
        return exitDone;
    }
    std::string reason;
    if (writeFile(file, text, reason)) return exitDone;
    std::fprintf(stderr, "krmwtarn %s: cannot write %s: %s\n", command, file.c_str(), reason.c_str());
    return exitBadInput;
}

void printText(const std::string& text) {
    std::string reason;
    if (std::fflush(stdout) != 0 || !writeAll(STDOUT_FILENO, text, reason)) {
        if (reason.empty()) reason = std::strerror(errno);
        if (standardOutputFailure.empty()) standardOutputFailure = reason;
    }
}

bool flushStandardOutput(std::string& reason) {
    // std::cout writes through stdout (synchronised streams): stdout first,
    // while what it holds can still fail with its reason.
    errno = 0;
    if (std::fflush(stdout) != 0) return fail(reason, errno);
    std::cout.flush();
    reason = standardOutputFailure;
    if (reason.empty() && (std::ferror(stdout) || !std::cout)) {
        // An earlier write failed and what it held is lost; its reason is gone.
        reason = "write error";
    }
    return reason.empty();
}

}  // namespace krmwtarn
