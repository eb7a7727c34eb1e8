#pragma once

#include "dhRichClient3/connection.h"

#include <string>

namespace bench {

/// A plant of so many assets, each with one weekly synchronised assignment that was last launched in another week.
void FillPlant(dhRichClient3::Connection& connection, int assets);

/// Brings all assignments back to being due and takes the bulletins away.
void MakeDue(dhRichClient3::Connection& connection);

/// A database file of its own in the temporary folder, removed with its companions at the end.
class ScratchFile {
public:
    explicit ScratchFile(const std::string& name);
    ~ScratchFile();
    ScratchFile(const ScratchFile&) = delete;
    ScratchFile& operator=(const ScratchFile&) = delete;
    const std::string& Path() const { return path_; }

private:
    void Remove() const;
    std::string path_;
};

}  // namespace bench
