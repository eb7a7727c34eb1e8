#include "bench/process.h"

#include "bench/harness.h"

#include <fcntl.h>
#include <malloc.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>

#include <chrono>
#include <fstream>

extern char** environ;

namespace bench {

namespace {

double SecondsOf(const timeval& time) {
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) * 1e-6;
}

/// A child's peak counts what it was before it became the program: this process, with this one's peak.
void ForgetPeak() {
    malloc_trim(0);
    std::ofstream("/proc/self/clear_refs") << 5;
}

}  // namespace

Spent RunProgram(const std::vector<std::string>& arguments) {
    std::vector<std::string> held = arguments;
    std::vector<char*> argv;
    for (std::string& argument : held)
        argv.push_back(argument.data());
    argv.push_back(nullptr);
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, 1, "/dev/null", O_WRONLY, 0);
    ForgetPeak();
    const auto begun = std::chrono::steady_clock::now();
    pid_t child = 0;
    const bool started = posix_spawnp(&child, argv[0], &actions, nullptr, argv.data(), environ) == 0;
    posix_spawn_file_actions_destroy(&actions);
    Require(started, arguments.front() + " can't be started");
    int status = 0;
    rusage usage{};
    wait4(child, &status, 0, &usage);
    const std::chrono::duration<double> wall = std::chrono::steady_clock::now() - begun;
    Require(WIFEXITED(status) && WEXITSTATUS(status) == 0, arguments.front() + " " + arguments.at(1) + " failed");
    return {wall.count(), SecondsOf(usage.ru_utime) + SecondsOf(usage.ru_stime),
            static_cast<std::size_t>(usage.ru_maxrss) * 1024};
}

}  // namespace bench
