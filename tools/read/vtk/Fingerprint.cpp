#include "Fingerprint.h"

#include "Cells.h"
#include "MeshReader.h"

#include <vtkDataArray.h>
#include <vtkUnsignedCharArray.h>

#include <array>
#include <cstring>

namespace VtkRead {

namespace {

class Hash
{
public:
    void add(std::uint64_t word)
    {
        constexpr std::uint64_t odd = 0x9E3779B97F4A7C15U;
        constexpr unsigned int half = 32;
        value_ = (value_ ^ word) * odd;
        value_ ^= value_ >> half;
    }

    void add(double number)
    {
        std::uint64_t bits = 0;
        std::memcpy(&bits, &number, sizeof(bits));
        add(bits);
    }

    void add(vtkDataArray* array)
    {
        add(std::uint64_t(array == nullptr ? 0 : 1));
        if (array != nullptr)
            for (vtkIdType i = 0; i < array->GetNumberOfTuples(); ++i)
                add(array->GetComponent(i, 0));
    }

    std::uint64_t value() const { return value_; }

private:
    std::uint64_t value_ = 1;
};

std::uint64_t hashOfCells(vtkDataSet& data)
{
    Hash hash;
    hash.add(static_cast<std::uint64_t>(data.GetNumberOfPoints()));
    visitCells(data, [&hash](int type, vtkIdType count, vtkIdType const* points) {
        hash.add(static_cast<std::uint64_t>(type));
        hash.add(static_cast<std::uint64_t>(count));
        for (vtkIdType i = 0; i < count; ++i)
            hash.add(static_cast<std::uint64_t>(points[i]));
    });
    hash.add(pointIdArray(data));
    hash.add(cellIdArray(data));
    hash.add(data.GetPointGhostArray());
    hash.add(data.GetCellGhostArray());
    return hash.value();
}

std::uint64_t hashOfCoordinates(vtkDataSet& data)
{
    Hash hash;
    std::array<double, 3> point{};
    for (vtkIdType i = 0; i < data.GetNumberOfPoints(); ++i) {
        data.GetPoint(i, point.data());
        for (double const coordinate : point)
            hash.add(coordinate);
    }
    return hash.value();
}

} // namespace

Fingerprint Fingerprint::of(vtkDataSet* data)
{
    if (data == nullptr)
        return {};
    return {hashOfCells(*data), hashOfCoordinates(*data)};
}

} // namespace VtkRead
