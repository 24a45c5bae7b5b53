#ifndef BENCH_HDFFILE_H
#define BENCH_HDFFILE_H

#include <hdf5.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace Bench {

/// An open HDF5 object, closed at the end of its life.
class HdfObject
{
public:
    using Close = herr_t (*)(hid_t);

    /// \throws std::runtime_error there is no such object
    HdfObject(hid_t id, Close closeBy);
    ~HdfObject();
    HdfObject(HdfObject const&) = delete;
    HdfObject& operator=(HdfObject const&) = delete;

    hid_t id() const { return id_; }

    /// Closes now, for those who must know whether that works.
    /// \throws std::runtime_error it does not
    void close();

private:
    hid_t id_;
    Close close_;
};

enum class HdfStorage
{
    /// Chunks of up to 65,536 rows, shuffled and deflated at level 6.
    Compressed,
    Contiguous
};

enum class HdfFormat
{
    /// What the library writes when it is not asked for another: readable by all its versions.
    Default,
    /// What its newest version writes: smaller groups and datasets.
    Newest
};

HdfObject createHdfFile(std::string const& path, HdfFormat format = HdfFormat::Default);

HdfObject openHdfFile(std::string const& path);

HdfObject createHdfGroup(hid_t parent, std::string const& name);

/// Writes a dataset of rows x width.
void writeHdfDataset(hid_t parent, std::string const& name, std::vector<float> const& values,
                     std::size_t width, HdfStorage storage);
/// \copydoc writeHdfDataset
void writeHdfDataset(hid_t parent, std::string const& name,
                     std::vector<std::uint32_t> const& values, std::size_t width,
                     HdfStorage storage);

/// Reads a dataset, whatever its shape is, into the front of a vector that is made larger where it
/// has to be.
/// \return how many values it has
std::size_t readHdfDataset(hid_t parent, std::string const& name, std::vector<float>& values);
/// \copydoc readHdfDataset
std::size_t readHdfDataset(hid_t parent, std::string const& name,
                           std::vector<std::uint32_t>& values);

} // namespace Bench

#endif
