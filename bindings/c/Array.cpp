#include <moxwriter.h>

namespace {

mox_array withoutGaps(void const* data, mox_element element, size_t rows, size_t columns,
                      size_t size)
{
    return {data,
            element,
            rows,
            columns,
            static_cast<ptrdiff_t>(columns * size),
            static_cast<ptrdiff_t>(size)};
}

} // namespace

mox_array mox_float32_array(float const* data, size_t rows, size_t columns)
{
    return withoutGaps(data, MOX_FLOAT32, rows, columns, sizeof *data);
}

mox_array mox_float64_array(double const* data, size_t rows, size_t columns)
{
    return withoutGaps(data, MOX_FLOAT64, rows, columns, sizeof *data);
}

mox_array mox_int32_array(int32_t const* data, size_t rows, size_t columns)
{
    return withoutGaps(data, MOX_INT32, rows, columns, sizeof *data);
}

mox_array mox_uint32_array(uint32_t const* data, size_t rows, size_t columns)
{
    return withoutGaps(data, MOX_UINT32, rows, columns, sizeof *data);
}

mox_array mox_int64_array(int64_t const* data, size_t rows, size_t columns)
{
    return withoutGaps(data, MOX_INT64, rows, columns, sizeof *data);
}

mox_array mox_uint64_array(uint64_t const* data, size_t rows, size_t columns)
{
    return withoutGaps(data, MOX_UINT64, rows, columns, sizeof *data);
}
