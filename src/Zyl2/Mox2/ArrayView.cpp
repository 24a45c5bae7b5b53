#include <Zyl2/Mox2/ArrayView.h>

#include "Zyl2/Exception/Raise.h"

namespace Zyl2 {
namespace Mox2 {

std::size_t ArrayView::wholeRows(std::size_t values, std::size_t columns)
{
    if (columns == 0 || values % columns != 0)
        Exception::raise(
            Exception::Sites::ArrayView::NoWholeRows,
            Exception::sentence(values, " values fill no whole rows of ", columns, " columns"));
    return values / columns;
}

} // namespace Mox2
} // namespace Zyl2
