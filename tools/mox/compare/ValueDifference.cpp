#include "ValueDifference.h"

#include "mox/print/ValueText.h"

#include <algorithm>
#include <cmath>

namespace Mox {

namespace {

void keepLarger(std::optional<ValueDifference::Place>& largest, ValueDifference::Place const& place)
{
    if (!largest || place.difference > largest->difference)
        largest = place;
}

double relativeTo(double difference, double left, double right)
{
    return std::isinf(difference) ? difference
                                  : difference / std::max(std::abs(left), std::abs(right));
}

void add(ValueDifference& result, ValueDifference::Place place)
{
    if (std::isnan(place.left) || std::isnan(place.right)) {
        ++result.notNumbers;
        return;
    }
    place.difference = std::abs(place.left - place.right);
    keepLarger(result.largestAbsolute, place);
    place.difference = relativeTo(place.difference, place.left, place.right);
    keepLarger(result.largestRelative, place);
}

} // namespace

ValueDifference ValueDifference::of(MoxRead::Dataset const& left, MoxRead::Dataset const& right,
                                    Tolerance const& tolerance)
{
    ValueDifference result;
    result.isFloat = left.elementType == MoxRead::ElementType::Float;
    result.rows = left.rows();
    Tolerance const allowed = result.isFloat ? tolerance : Tolerance();
    std::size_t lastRow = result.rows;
    for (std::size_t i = 0; i < left.words.size(); ++i) {
        if (left.words[i] == right.words[i])
            continue;
        Place const place = {0, i / left.width, i % left.width,
                             numberOf(left.words[i], result.isFloat),
                             numberOf(right.words[i], result.isFloat)};
        if (allowed.accepts(place.left, place.right))
            continue;
        result.differingRows += place.row == lastRow ? 0 : 1;
        lastRow = place.row;
        add(result, place);
    }
    return result;
}

} // namespace Mox
