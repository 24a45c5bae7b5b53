#include "EnSightCheck.h"

#include "EnSightFaults.h"
#include "EnSightFile.h"
#include "EnSightMesh.h"
#include "EnSightMeshWalker.h"
#include "EnSightVariableWalker.h"

#include <exchange/Error.h>

#include <algorithm>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace VtkRead {

namespace {

using DataFiles = std::vector<EnSightCase::DataFile>;
using Format = EnSightFile::Format;

/// \return whether all steps of all files were understood
template <typename WalkStep>
bool walk(DataFiles const& files, Format format, WalkStep const& walkStep)
{
    try {
        for (EnSightCase::DataFile const& each : files) {
            EnSightFile file(each.path, format);
            for (std::uint64_t i = 0; i == 0 || (file.isSeries() && i < each.steps); ++i)
                walkStep(file);
        }
        return true;
    } catch (EnSightFile::Unknown const&) {
        return false;
    }
}

class Check
{
public:
    Check(EnSightCase const& description, Exchange::Report& report)
        : case_(description), report_(report)
    {}

    void run()
    {
        bool const isGold = case_.isGold();
        checkMesh(case_.meshes(), false,
                  [isGold](EnSightFile& file) { return EnSightMeshWalker(file, isGold).walk(); });
        checkMesh(case_.measured(), true, [isGold](EnSightFile& file) {
            return EnSightMeshWalker(file, isGold).walkMeasured();
        });
        tellOfLoneEnds();
        EnSightFaults::tellOfLosses(case_, report_);
    }

private:
    /// The variables are only checked when the mesh is the same in all steps.
    template <typename WalkMesh>
    void checkMesh(DataFiles const& files, bool isMeasured, WalkMesh const& walkMesh)
    {
        if (files.empty())
            return;
        Format const format = EnSightFile::formatOf(files.front().path);
        EnSightFaults::requireReadable(case_, format);
        std::vector<EnSightMesh> different;
        bool const isUnderstood = walk(files, format, [&](EnSightFile& file) {
            EnSightMesh const mesh = walkMesh(file);
            if (!different.empty() && different.front() == mesh)
                return;
            requireReadable(mesh, isMeasured, format);
            different.push_back(mesh);
        });
        if (!different.empty())
            EnSightFaults::tellOfLosses(different.front(), format, report_);
        if (!isUnderstood || different.size() != 1)
            return;
        for (EnSightCase::Variable const& variable : case_.variables())
            if (variable.isMeasured == isMeasured)
                checkVariable(variable, different.front(), format);
    }

    void requireReadable(EnSightMesh const& mesh, bool isMeasured, Format format)
    {
        EnSightFaults::requireReadable(mesh, format);
        for (EnSightCase::Variable const& variable : case_.variables())
            if (variable.isMeasured == isMeasured)
                EnSightFaults::requireReadable(variable, mesh, format);
    }

    void checkVariable(EnSightCase::Variable const& variable, EnSightMesh const& mesh,
                       Format format)
    {
        for (EnSightCase::DataFile const& each : variable.files)
            walk({each}, format, [&](EnSightFile& file) {
                EnSightVariableWalker walker(file, mesh, variable);
                walker.walk();
                EnSightFaults::requireReadable(case_, variable, walker, file);
                if (auto const part = walker.partAtEarlyEnd())
                    filesThatEndEarly_[*part].insert(each.path);
            });
    }

    /// A variable need not have values of all parts. Where one file alone ends before the last of
    /// them it may have been cut off, too: a variable of some parts often has more files.
    void tellOfLoneEnds() const
    {
        for (auto const& [part, files] : filesThatEndEarly_)
            if (files.size() == 1)
                report_.warn("The file '" + files.begin()->string() +
                             "' has no values of the last parts, or was cut off behind a part.");
    }

    EnSightCase const& case_;
    Exchange::Report& report_;
    std::map<std::uint64_t, std::set<std::filesystem::path>> filesThatEndEarly_;
};

} // namespace

EnSightCase requireWholeFiles(std::filesystem::path const& caseFile, Exchange::Report& report)
{
    EnSightCase description(caseFile);
    Check(description, report).run();
    return description;
}

} // namespace VtkRead
