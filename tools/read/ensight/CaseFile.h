#ifndef READ_ENSIGHT_CASEFILE_H
#define READ_ENSIGHT_CASEFILE_H

#include "Words.h"

#include <exchange/Report.h>

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace EnSight {

/// What the file of a case says: which files hold its mesh and its variables, and of which steps.
/// Raises `Exchange::Error` where it makes no sense, and warns of what is left out.
class CaseFile
{
public:
    struct TimeSet
    {
        std::string id;
        std::uint64_t stepCount = 1;
        std::uint64_t firstNumber = 0;
        std::uint64_t increment = 1;
        std::vector<std::uint64_t> numbers{};
        /// Ascending.
        std::vector<double> times{};
    };

    /// How many steps are in each of several files.
    struct FileSet
    {
        std::string id;
        std::vector<std::uint64_t> numbers{};
        std::vector<std::uint64_t> stepCounts{};
    };

    /// The files of a mesh or of a variable. Without a time set it is the same in all steps.
    struct Series
    {
        /// The number of a file goes where its stars are.
        std::string pattern;
        TimeSet const* timeSet = nullptr;
        FileSet const* fileSet = nullptr;
    };

    struct Mesh
    {
        Series files;
        /// The step of the series that has the elements, where the others need not have any.
        std::optional<std::size_t> stepOfElements;
    };

    struct Variable
    {
        std::string name;
        std::size_t components = 1;
        bool isPerElement = false;
        bool isMeasured = false;
        Series files;
    };

    /// A number that belongs to the whole case, or to each step of a time set.
    struct Constant
    {
        std::string name;
        TimeSet const* timeSet = nullptr;
        std::vector<double> values;
    };

    /// Where a step is: the place in a file counts only if the file has several steps.
    struct StepPlace
    {
        std::filesystem::path path;
        std::uint64_t stepInFile = 0;
    };

    CaseFile(std::filesystem::path const& path, Exchange::Report& report);
    CaseFile(CaseFile const&) = delete;
    CaseFile& operator=(CaseFile const&) = delete;

    bool isGold() const { return isGold_; }
    std::optional<Mesh> const& model() const { return model_; }
    std::optional<Mesh> const& measured() const { return measured_; }
    /// A complex variable is two, its real and its imaginary part.
    std::vector<Variable> const& variables() const { return variables_; }
    std::vector<Constant> const& constants() const { return constants_; }

    /// The times of all time sets, ascending; empty where the case knows no time.
    std::vector<double> const& times() const { return times_; }
    /// Which step of a series a step of the case is; none where its time set does not have it.
    std::optional<std::size_t> stepAt(TimeSet const* set, std::size_t step) const;
    /// The latest step of a series that is not after a step of the case.
    std::size_t latestStepAt(TimeSet const* set, std::size_t step) const;
    StepPlace placeOf(Series const& series, std::size_t step) const;
    /// Bytes of the files that hold the first values of the variables.
    std::uint64_t bytesOfVariables() const;

private:
    struct Entry
    {
        std::string section;
        Words key;
        Words values;
    };

    void addLine(std::string const& line);
    void readTime(Entry const& entry);
    void readFileSet(Entry const& entry);
    void finishTimes();
    void readMesh(Entry const& entry);
    void readVariable(Entry const& entry);
    void readConstant(Entry const& entry);
    void leaveOut(Entry const& entry);

    Series seriesOf(std::string const& pattern, Words const& sets) const;
    Words wordsOfFile(std::string const& name) const;
    std::filesystem::path pathOf(std::string pattern, std::uint64_t number) const;

    std::filesystem::path folder_;
    Exchange::Report& report_;
    std::string section_;
    std::vector<Entry> entries_;
    std::vector<TimeSet> timeSets_;
    std::vector<FileSet> fileSets_;
    std::vector<double> times_;
    bool isGold_ = false;
    std::optional<Mesh> model_;
    std::optional<Mesh> measured_;
    std::vector<Variable> variables_;
    std::vector<Constant> constants_;
};

} // namespace EnSight

#endif
