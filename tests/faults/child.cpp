#include "tests/faults/child.h"

#include <sys/wait.h>
#include <unistd.h>
#include <cerrno>
#include <csignal>
#include <exception>
#include <iostream>
#include <stdexcept>

namespace faults {

namespace {

constexpr int kRaised = 99;

int StatusOf(const std::function<int()>& work) {
    try {
        return work();
    } catch (const std::exception& error) {
        std::cerr << "child: " << error.what() << std::endl;
    }
    return kRaised;
}

}  // namespace

Child::Child(const std::function<int()>& work) : process_(fork()) {
    if (process_ < 0) throw std::runtime_error("no process for the test");
    if (process_ == 0) _exit(StatusOf(work));
}

Child::~Child() {
    if (waitedFor_) return;
    Kill();
    Wait();
}

void Child::Kill() const {
    if (!waitedFor_) kill(process_, SIGKILL);
}

int Child::Wait() {
    int status = 0;
    while (waitpid(process_, &status, 0) < 0 && errno == EINTR) {
    }
    waitedFor_ = true;
    return WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
}

}  // namespace faults
