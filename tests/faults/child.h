#pragma once

#include <sys/types.h>
#include <functional>

namespace faults {

/// A process of its own that runs some work, made by `fork`. The parent may have no database open meanwhile: SQLite's
/// locks belong to a process.
class Child {
public:
    /// Starts it. It ends with the status that the work gives, 99 if the work raised something.
    explicit Child(const std::function<int()>& work);
    /// Kills it if it still runs.
    ~Child();
    Child(const Child&) = delete;
    Child& operator=(const Child&) = delete;

    /// Ends it with SIGKILL; nothing if it has ended already.
    void Kill() const;
    /// Waits for its end: its status, or -9 when it was killed.
    int Wait();

private:
    pid_t process_;
    bool waitedFor_ = false;
};

}  // namespace faults
