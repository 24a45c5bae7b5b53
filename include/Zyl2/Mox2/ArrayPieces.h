#ifndef ZYL2_MOX2_ARRAYPIECES_H
#define ZYL2_MOX2_ARRAYPIECES_H

#include <Zyl2/Export.h>
#include <Zyl2/Mox2/ArrayView.h>

#include <cstddef>

namespace Zyl2 {
namespace Mox2 {

/// Values that are never all in memory at once, such as those that come through a network: some
/// rows at a time, each piece going from where it is into the block.
class ZYL2_EXPORT ArrayPieces
{
public:
    /// \param element what each piece holds: `Float32` or `UInt32`
    /// \param rows    number of rows in all pieces together
    /// \param columns number of columns
    ArrayPieces(ArrayView::Element element, std::size_t rows, std::size_t columns) noexcept
        : element_(element), rows_(rows), columns_(columns)
    {}
    virtual ~ArrayPieces();
    ArrayPieces(ArrayPieces const&) = delete;
    ArrayPieces& operator=(ArrayPieces const&) = delete;

    /// The rows that follow those of the call before. It is called until all rows were there.
    /// \return at least one row, of the elements and columns that were announced; looked at until
    ///         the next call
    virtual ArrayView next() = 0;

    ArrayView::Element element() const noexcept { return element_; }
    std::size_t rows() const noexcept { return rows_; }
    std::size_t columns() const noexcept { return columns_; }

private:
    ArrayView::Element element_;
    std::size_t rows_;
    std::size_t columns_;
};

} // namespace Mox2
} // namespace Zyl2

#endif
