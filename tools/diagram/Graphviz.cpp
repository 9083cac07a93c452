// Graphviz.cpp — running `dot` (see Graphviz.h) with posix_spawnp and three
// pipes, fed and drained together through poll so that neither side waits on
// a full pipe. SIGPIPE is held back in this thread while writing, so a dot
// that ends before reading everything makes a failed write, not a killed tool.
#include <krmwtarn/diagram/Graphviz.h>

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <ctime>

extern char** environ;

namespace krdiagram {
namespace {

// Closes what it holds when it goes.
struct Fd {
    int fd = -1;
    ~Fd() { reset(); }
    void reset() {
        if (fd >= 0) ::close(fd);
        fd = -1;
    }
};

// SIGPIPE blocked in this thread for the lifetime; one raised meanwhile is
// taken away before the old mask comes back.
class HoldSigpipe {
public:
    HoldSigpipe() {
        sigset_t pipeOnly;
        sigemptyset(&pipeOnly);
        sigaddset(&pipeOnly, SIGPIPE);
        sigset_t pending;
        sigpending(&pending);
        alreadyPending_ = sigismember(&pending, SIGPIPE) == 1;
        pthread_sigmask(SIG_BLOCK, &pipeOnly, &old_);
    }
    ~HoldSigpipe() {
        sigset_t pending;
        sigpending(&pending);
        if (!alreadyPending_ && sigismember(&pending, SIGPIPE) == 1) {
            sigset_t pipeOnly;
            sigemptyset(&pipeOnly);
            sigaddset(&pipeOnly, SIGPIPE);
            timespec none{0, 0};
            sigtimedwait(&pipeOnly, nullptr, &none);
        }
        pthread_sigmask(SIG_SETMASK, &old_, nullptr);
    }
    HoldSigpipe(const HoldSigpipe&) = delete;
    HoldSigpipe& operator=(const HoldSigpipe&) = delete;

private:
    sigset_t old_;
    bool alreadyPending_ = false;
};

bool makePipe(Fd& readEnd, Fd& writeEnd) {
    int fds[2];
    if (::pipe2(fds, O_CLOEXEC) != 0) return false;
    readEnd.fd = fds[0];
    writeEnd.fd = fds[1];
    return true;
}

Rendering failure(Rendering::Outcome outcome, const std::string& reason) {
    Rendering r;
    r.outcome = outcome;
    r.reason = reason;
    return r;
}

// Reads what is there into `into`; false at the end of the stream.
bool drain(Fd& from, std::string& into) {
    char buffer[65536];
    ssize_t n = ::read(from.fd, buffer, sizeof buffer);
    if (n < 0 && (errno == EINTR || errno == EAGAIN)) return true;
    if (n <= 0) {
        from.reset();
        return false;
    }
    into.append(buffer, static_cast<std::size_t>(n));
    return true;
}

}  // namespace

Rendering renderWithDot(const std::string& dot, const std::string& format) {
    Fd inRead, inWrite, outRead, outWrite, errRead, errWrite;
    if (!makePipe(inRead, inWrite) || !makePipe(outRead, outWrite) || !makePipe(errRead, errWrite))
        return failure(Rendering::dotFailed, std::strerror(errno));
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, inRead.fd, STDIN_FILENO);
    posix_spawn_file_actions_adddup2(&actions, outWrite.fd, STDOUT_FILENO);
    posix_spawn_file_actions_adddup2(&actions, errWrite.fd, STDERR_FILENO);
    std::string type = "-T" + format;
    char program[] = "dot";
    char* argv[] = {program, type.data(), nullptr};
    pid_t pid = -1;
    int spawned = posix_spawnp(&pid, program, &actions, nullptr, argv, environ);
    posix_spawn_file_actions_destroy(&actions);
    if (spawned != 0)
        return failure(spawned == ENOENT ? Rendering::dotMissing : Rendering::dotFailed, std::strerror(spawned));
    inRead.reset();
    outWrite.reset();
    errWrite.reset();
    ::fcntl(inWrite.fd, F_SETFL, ::fcntl(inWrite.fd, F_GETFL) | O_NONBLOCK);

    Rendering r;
    std::string errors;
    std::size_t written = 0;
    {
        HoldSigpipe hold;
        if (dot.empty()) inWrite.reset();
        while (inWrite.fd >= 0 || outRead.fd >= 0 || errRead.fd >= 0) {
            pollfd fds[3] = {{inWrite.fd, POLLOUT, 0}, {outRead.fd, POLLIN, 0}, {errRead.fd, POLLIN, 0}};
            if (::poll(fds, 3, -1) < 0) {
                if (errno == EINTR) continue;
                break;
            }
            if (fds[0].revents) {
                ssize_t n = ::write(inWrite.fd, dot.data() + written, dot.size() - written);
                if (n > 0) written += static_cast<std::size_t>(n);
                // dot stopped reading (it failed, and says why on standard error).
                if ((n < 0 && errno != EINTR && errno != EAGAIN) || written == dot.size()) inWrite.reset();
            }
            if (fds[1].revents) drain(outRead, r.output);
            if (fds[2].revents) drain(errRead, errors);
        }
    }
    int status = 0;
    while (::waitpid(pid, &status, 0) < 0 && errno == EINTR) {
    }
    if (WIFEXITED(status) && WEXITSTATUS(status) == 0) {
        r.outcome = Rendering::rendered;
        return r;
    }
    while (!errors.empty() && (errors.back() == '\n' || errors.back() == ' ')) errors.pop_back();
    if (errors.empty())
        errors = WIFEXITED(status) ? "dot ended with status " + std::to_string(WEXITSTATUS(status))
                                   : "dot was ended by signal " + std::to_string(WTERMSIG(status));
    return failure(Rendering::dotFailed, errors);
}

}  // namespace krdiagram
