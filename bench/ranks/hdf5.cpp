// A transient result of many ranks, by parallel HDF5: all ranks write one file, collectively and
// compressed.
//
//   --output FOLDER --edge NODES --steps STEPS

#include "HdfFile.h"
#include "ranks/Ranks.h"

#include <array>
#include <stdexcept>

using namespace Bench;

namespace {

constexpr hsize_t MostChunkRows = 65536;
constexpr unsigned DeflateLevel = 6;

void check(herr_t status, char const* what)
{
    if (status < 0)
        throw std::runtime_error(std::string("HDF5 failed: ") + what);
}

hid_t typeOf(std::vector<float> const& /*values*/)
{
    return H5T_NATIVE_FLOAT;
}

hid_t typeOf(std::vector<std::uint32_t> const& /*values*/)
{
    return H5T_NATIVE_UINT32;
}

/// Rows of all ranks in one dataset. No chunk holds rows of two ranks, which HDF5 would have to
/// send from one to the other.
class CollectiveFile
{
public:
    CollectiveFile(Ranks const& ranks, std::string const& path)
        : ranks_(ranks), access_(H5Pcreate(H5P_FILE_ACCESS), H5Pclose),
          transfer_(H5Pcreate(H5P_DATASET_XFER), H5Pclose), file_(create(path), H5Fclose)
    {
        check(H5Pset_dxpl_mpio(transfer_.id(), H5FD_MPIO_COLLECTIVE), "H5Pset_dxpl_mpio");
    }

    hid_t id() const { return file_.id(); }
    void close() { file_.close(); }

    template <typename T>
    void write(hid_t parent, char const* name, std::vector<T> const& values, std::size_t width)
    {
        hsize_t const rows = values.size() / width;
        std::array<hsize_t, 2> const all{rows * static_cast<hsize_t>(ranks_.size()), width};
        std::array<hsize_t, 2> const own{rows, width};
        std::array<hsize_t, 2> const start{rows * static_cast<hsize_t>(ranks_.rank()), 0};
        HdfObject const space(H5Screate_simple(2, all.data(), nullptr), H5Sclose);
        HdfObject const memory(H5Screate_simple(2, own.data(), nullptr), H5Sclose);
        HdfObject const properties(H5Pcreate(H5P_DATASET_CREATE), H5Pclose);
        compress(properties.id(), own);
        HdfObject dataset(H5Dcreate2(parent, name, typeOf(values), space.id(), H5P_DEFAULT,
                                     properties.id(), H5P_DEFAULT),
                          H5Dclose);
        check(H5Sselect_hyperslab(space.id(), H5S_SELECT_SET, start.data(), nullptr, own.data(),
                                  nullptr),
              "H5Sselect_hyperslab");
        check(H5Dwrite(dataset.id(), typeOf(values), memory.id(), space.id(), transfer_.id(),
                       values.data()),
              "H5Dwrite");
        dataset.close();
    }

private:
    hid_t create(std::string const& path)
    {
        check(H5Pset_fapl_mpio(access_.id(), MPI_COMM_WORLD, MPI_INFO_NULL), "H5Pset_fapl_mpio");
        check(H5Pset_all_coll_metadata_ops(access_.id(), true), "H5Pset_all_coll_metadata_ops");
        check(H5Pset_coll_metadata_write(access_.id(), true), "H5Pset_coll_metadata_write");
        return H5Fcreate(path.c_str(), H5F_ACC_EXCL, H5P_DEFAULT, access_.id());
    }

    static void compress(hid_t properties, std::array<hsize_t, 2> const& own)
    {
        // As many chunks as are needed, of equal size where the rows allow it.
        hsize_t const chunks = (own[0] + MostChunkRows - 1) / MostChunkRows;
        hsize_t rows = (own[0] + chunks - 1) / chunks;
        while (own[0] % rows != 0)
            --rows;
        std::array<hsize_t, 2> const chunk{rows, own[1]};
        check(H5Pset_chunk(properties, 2, chunk.data()), "H5Pset_chunk");
        check(H5Pset_shuffle(properties), "H5Pset_shuffle");
        check(H5Pset_deflate(properties, DeflateLevel), "H5Pset_deflate");
        // Every chunk is written: to fill them first would write all of them twice.
        check(H5Pset_fill_time(properties, H5D_FILL_TIME_NEVER), "H5Pset_fill_time");
    }

    Ranks const& ranks_;
    HdfObject access_;
    HdfObject transfer_;
    HdfObject file_;
};

void writeResult(Ranks const& ranks, Arguments const& arguments)
{
    TransientResult const result = blockOf(ranks, arguments);
    std::string const folder = arguments.text("output");
    measureRanks(ranks, folder, result.bytes(), [&] {
        CollectiveFile file(ranks, folder + "/result.h5");
        file.write(file.id(), "Coordinates", result.mesh.coordinates, 3);
        file.write(file.id(), "Connectivity", result.mesh.connectivity, 8);
        file.write(file.id(), "Polylength", result.mesh.nodesPerCell, 1);
        file.write(file.id(), "Node Ids", result.mesh.nodeIds, 1);
        file.write(file.id(), "Element IDs", result.mesh.cellIds, 1);
        for (StepFields const& step : result.steps) {
            HdfObject const group = createHdfGroup(file.id(), step.name);
            file.write(group.id(), "Displacement", step.displacement, 3);
            file.write(group.id(), "Stress", step.stress, 6);
        }
        return secondsOf([&] { file.close(); });
    });
}

} // namespace

int main(int argc, char** argv)
{
    return runRanks(argc, argv, writeResult);
}
