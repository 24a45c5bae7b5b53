#ifndef READ_ENSIGHT_STEPFILES_H
#define READ_ENSIGHT_STEPFILES_H

#include "CaseFile.h"
#include "DataFile.h"

#include <cstddef>
#include <filesystem>
#include <functional>
#include <vector>

namespace EnSight {

/// Finds steps in the files of a mesh or of a variable. Where those of a file begin is known when
/// the steps before were read, so that each is walked through once.
class StepFiles
{
public:
    /// Reads a step from its first line of description on, which is read.
    using Read = std::function<void(DataFile&)>;

    /// \param isMesh whether binary files begin with a line that tells their format
    StepFiles(CaseFile const& description, CaseFile::Series const& series, bool isMesh);

    /// \param encoding learns the order of bytes where it is not known yet
    void read(std::size_t step, DataFile::Encoding& encoding, Read const& read);

    /// Where steps begin, which was learned from a file that was not understood.
    void forget() { path_.clear(); }

private:
    CaseFile const& case_;
    CaseFile::Series const& series_;
    bool isMesh_;
    std::filesystem::path path_;
    /// Where the steps of the file at `path_` begin, as far as they were read.
    std::vector<DataFile::Place> starts_;
};

} // namespace EnSight

#endif
