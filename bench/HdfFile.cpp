#include "HdfFile.h"

#include <algorithm>
#include <array>
#include <stdexcept>

namespace Bench {

namespace {

constexpr hsize_t ChunkRows = 65536;
constexpr unsigned DeflateLevel = 6;

void check(herr_t status, char const* what)
{
    if (status < 0)
        throw std::runtime_error(std::string("HDF5 failed: ") + what);
}

void compress(hid_t properties, std::array<hsize_t, 2> const& shape)
{
    std::array<hsize_t, 2> const chunk{std::min(shape[0], ChunkRows), shape[1]};
    check(H5Pset_chunk(properties, 2, chunk.data()), "H5Pset_chunk");
    check(H5Pset_shuffle(properties), "H5Pset_shuffle");
    check(H5Pset_deflate(properties, DeflateLevel), "H5Pset_deflate");
}

void writeValues(hid_t parent, std::string const& name, hid_t type, void const* values,
                 std::array<hsize_t, 2> const& shape, HdfStorage storage)
{
    HdfObject const space(H5Screate_simple(2, shape.data(), nullptr), H5Sclose);
    HdfObject const properties(H5Pcreate(H5P_DATASET_CREATE), H5Pclose);
    if (storage == HdfStorage::Compressed)
        compress(properties.id(), shape);
    HdfObject dataset(H5Dcreate2(parent, name.c_str(), type, space.id(), H5P_DEFAULT,
                                 properties.id(), H5P_DEFAULT),
                      H5Dclose);
    check(H5Dwrite(dataset.id(), type, H5S_ALL, H5S_ALL, H5P_DEFAULT, values), "H5Dwrite");
    dataset.close();
}

template <typename T>
std::size_t readValues(hid_t parent, std::string const& name, hid_t type, std::vector<T>& values)
{
    HdfObject const dataset(H5Dopen2(parent, name.c_str(), H5P_DEFAULT), H5Dclose);
    HdfObject const space(H5Dget_space(dataset.id()), H5Sclose);
    auto const count = static_cast<std::size_t>(H5Sget_simple_extent_npoints(space.id()));
    values.resize(std::max(values.size(), count));
    check(H5Dread(dataset.id(), type, H5S_ALL, H5S_ALL, H5P_DEFAULT, values.data()), "H5Dread");
    return count;
}

} // namespace

HdfObject::HdfObject(hid_t id, Close closeBy) : id_(id), close_(closeBy)
{
    check(id < 0 ? -1 : 0, "an object can't be made");
}

HdfObject::~HdfObject()
{
    if (id_ >= 0)
        close_(id_);
}

void HdfObject::close()
{
    hid_t const id = id_;
    id_ = -1;
    check(close_(id), "an object can't be closed");
}

HdfObject createHdfFile(std::string const& path, HdfFormat format)
{
    HdfObject const properties(H5Pcreate(H5P_FILE_ACCESS), H5Pclose);
    if (format == HdfFormat::Newest)
        check(H5Pset_libver_bounds(properties.id(), H5F_LIBVER_LATEST, H5F_LIBVER_LATEST),
              "H5Pset_libver_bounds");
    return {H5Fcreate(path.c_str(), H5F_ACC_EXCL, H5P_DEFAULT, properties.id()), H5Fclose};
}

HdfObject openHdfFile(std::string const& path)
{
    return {H5Fopen(path.c_str(), H5F_ACC_RDONLY, H5P_DEFAULT), H5Fclose};
}

HdfObject createHdfGroup(hid_t parent, std::string const& name)
{
    return {H5Gcreate2(parent, name.c_str(), H5P_DEFAULT, H5P_DEFAULT, H5P_DEFAULT), H5Gclose};
}

void writeHdfDataset(hid_t parent, std::string const& name, std::vector<float> const& values,
                     std::size_t width, HdfStorage storage)
{
    writeValues(parent, name, H5T_NATIVE_FLOAT, values.data(), {values.size() / width, width},
                storage);
}

void writeHdfDataset(hid_t parent, std::string const& name,
                     std::vector<std::uint32_t> const& values, std::size_t width,
                     HdfStorage storage)
{
    writeValues(parent, name, H5T_NATIVE_UINT32, values.data(), {values.size() / width, width},
                storage);
}

std::size_t readHdfDataset(hid_t parent, std::string const& name, std::vector<float>& values)
{
    return readValues(parent, name, H5T_NATIVE_FLOAT, values);
}

std::size_t readHdfDataset(hid_t parent, std::string const& name,
                           std::vector<std::uint32_t>& values)
{
    return readValues(parent, name, H5T_NATIVE_UINT32, values);
}

} // namespace Bench
