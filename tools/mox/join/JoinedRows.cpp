#include "JoinedRows.h"

#include <algorithm>
#include <cmath>
#include <cstring>

namespace Mox::Join {

using MoxRead::ElementType;

namespace {

double valueFrom(std::uint32_t word, ElementType type)
{
    if (type != ElementType::Float)
        return static_cast<double>(word);
    float value = 0;
    std::memcpy(&value, &word, sizeof value);
    return static_cast<double>(value);
}

/// NaN where there is no value; integers have nothing of that kind.
std::uint32_t noValue(ElementType type)
{
    constexpr std::uint32_t quietNaN = 0x7FC00000U;
    return type == ElementType::Float ? quietNaN : 0;
}

} // namespace

JoinedRows::JoinedRows(RowMap const& map, ElementType type, std::size_t width)
    : map_(map), type_(type), width_(width), words_(map.count() * width, noValue(type)),
      isKnown_(map.count())
{}

void JoinedRows::take(std::size_t piece, std::vector<std::uint32_t> const& own)
{
    for (std::size_t row = 0; row < map_.countOf(piece); ++row)
        different_ += takeRow(own.data() + row * width_, map_.rowOf(piece, row)) ? 1 : 0;
}

/// \return whether another value of the row was there before
bool JoinedRows::takeRow(std::uint32_t const* own, std::size_t row)
{
    bool isOther = false;
    for (std::size_t column = 0; column < width_; ++column) {
        std::uint32_t& place = words_[row * width_ + column];
        double const value = valueFrom(own[column], type_);
        if (std::isfinite(value))
            largest_ = std::max(largest_, std::fabs(value));
        if (!isKnown_[row])
            place = own[column];
        else if (differs(place, own[column]))
            isOther = true;
    }
    isKnown_[row] = true;
    return isOther;
}

bool JoinedRows::differs(std::uint32_t known, std::uint32_t word)
{
    double const one = valueFrom(known, type_);
    double const other = valueFrom(word, type_);
    bool const areBothNone = std::isnan(one) && std::isnan(other);
    if (known == word || one == other || areBothNone)
        return false;
    // A number and NaN differ by more than any two numbers.
    double const distance = std::fabs(one - other);
    difference_ = std::max(difference_, std::isnan(distance) ? HUGE_VAL : distance);
    return true;
}

std::size_t JoinedRows::missing() const
{
    return static_cast<std::size_t>(std::count(isKnown_.begin(), isKnown_.end(), false));
}

} // namespace Mox::Join
