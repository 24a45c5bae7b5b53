#ifndef READ_VTK_COLLECTIONINPUT_H
#define READ_VTK_COLLECTIONINPUT_H

#include "Input.h"

#include <filesystem>
#include <map>
#include <string>
#include <vector>

namespace VtkRead {

/// A file that names the files of a series, several for one time when there are parts.
class CollectionInput : public Input
{
public:
    explicit CollectionInput(std::filesystem::path const& path);

    std::vector<double> const& times() const override { return times_; }
    /// The name that the step's first file gives it.
    std::string stepName(std::size_t step) override;
    vtkSmartPointer<vtkDataObject> read(std::size_t step) override;

private:
    struct Entry
    {
        std::filesystem::path file;
        std::string group;
        std::string name;
    };

    void addEntries(std::filesystem::path const& path);
    std::vector<Entry> const& entriesOf(std::size_t step) const;

    /// By time; entries of one time are in the order of the file.
    std::map<double, std::vector<Entry>> entries_;
    bool hasTimes_ = false;
    std::vector<double> times_;
};

} // namespace VtkRead

#endif
