#pragma once

#include "dhRichClient3/connection.h"
#include "frame/CGlobalPreventivo.h"

#include <string>

namespace host {

/// An open plant: its database, the session on it, and the component's front door. One at a time in a process, since
/// the session is the process's.
class Plant {
public:
    enum class Use {
        Read,
        Write,
        Copy,  ///< a private copy: may be written to, and what is written goes with the plant
    };

    /// Opens a database that is there. A `Failure` with what to do when it is missing or hasn't the schema; the
    /// engine's error when it is no database, locked or refused.
    Plant(const std::string& path, Use use);
    /// Undoes what is open and takes the session away.
    ~Plant();
    Plant(const Plant&) = delete;
    Plant& operator=(const Plant&) = delete;

    Zontara::CGlobalPreventivo& Component() { return *component_; }
    dhRichClient3::Connection& Database() { return *database_; }
    const std::string& Path() const { return path_; }

private:
    std::string path_;
    Zontara::Ref<dhRichClient3::Connection> database_;
    Zontara::Ref<Zontara::CGlobalPreventivo> component_;
};

/// The outer transaction of a command, within which the component's own ones nest: all of it is committed at once, or
/// nothing. Since it takes the right to write when it begins, what is read inside it stays true until the commit.
class Transaction {
public:
    explicit Transaction(Plant& plant);
    /// Undoes everything unless `Commit` went through.
    ~Transaction();
    Transaction(const Transaction&) = delete;
    Transaction& operator=(const Transaction&) = delete;

    void Commit();

private:
    void Abort() noexcept;

    Plant& plant_;
    bool open_ = true;
};

}  // namespace host
