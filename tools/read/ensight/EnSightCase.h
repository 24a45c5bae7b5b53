#ifndef READ_ENSIGHT_ENSIGHTCASE_H
#define READ_ENSIGHT_ENSIGHTCASE_H

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

namespace VtkRead {

/// Which files a case of EnSight names, and what they are to hold. What is not understood is left
/// out: of a case that makes no sense, VTK's reader says so.
class EnSightCase
{
public:
    struct DataFile
    {
        std::filesystem::path path;
        std::uint64_t steps;
    };

    struct Variable
    {
        std::string name;
        std::uint64_t components;
        bool isPerElement;
        bool isMeasured;
        bool hasFileSet;
        std::vector<DataFile> files;
        /// Of which this is one of two parts, in files of their own.
        bool isComplex = false;
        /// The numbers of its time set and its file set, if it has any.
        std::vector<std::string> sets{};
    };

    explicit EnSightCase(std::filesystem::path const& path);

    bool isGold() const { return isGold_; }
    bool hasSeveralSteps() const;
    bool hasTimeSets() const { return !timeSets_.empty(); }
    bool hasFileSets() const { return !fileSets_.empty(); }
    std::vector<DataFile> const& meshes() const { return meshes_; }
    std::vector<DataFile> const& measured() const { return measured_; }
    std::vector<Variable> const& variables() const { return variables_; }
    /// Whether a variable of this name is to have values at a time. Those of a time set of its own
    /// need not have any in the steps of the others.
    bool hasValuesAt(std::string const& name, double time) const;
    /// Names of numbers that belong to the whole case.
    std::vector<std::string> const& constants() const { return constants_; }

private:
    using Words = std::vector<std::string>;

    struct Entry
    {
        std::string section;
        Words key;
        Words values;
    };

    struct TimeSet
    {
        std::string id;
        std::uint64_t steps = 1;
        std::uint64_t first = 0;
        std::uint64_t increment = 1;
        std::vector<std::uint64_t> numbers;
        /// None where they are in a file of their own.
        std::vector<float> times;
    };

    struct FileSet
    {
        std::string id;
        std::vector<std::uint64_t> indices;
        std::vector<std::uint64_t> steps;
    };

    void addLine(std::string const& line);
    void readEntry(Entry const& entry);
    void readTime(Entry const& entry);
    void readFileSet(Entry const& entry);
    void resolve(Entry const& entry);
    void resolveVariable(Entry const& entry);
    void resolveConstant(Entry const& entry);

    TimeSet const* timeSetOf(Words const& sets) const;
    /// \param sets the numbers of a time set and a file set, where they are given
    FileSet const* fileSetOf(Words const& sets) const;
    std::vector<DataFile> filesOf(std::string const& pattern, Words const& sets) const;
    std::vector<DataFile> filesOf(std::string const& pattern, TimeSet const& set) const;
    std::vector<DataFile> filesOf(std::string const& pattern, FileSet const& set) const;
    std::filesystem::path pathOf(std::string pattern, std::uint64_t number) const;

    std::filesystem::path folder_;
    std::string section_;
    std::vector<Entry> entries_;
    std::vector<TimeSet> timeSets_;
    std::vector<FileSet> fileSets_;
    bool isGold_ = false;
    std::vector<DataFile> meshes_;
    std::vector<DataFile> measured_;
    std::vector<Variable> variables_;
    std::vector<std::string> constants_;
};

} // namespace VtkRead

#endif
