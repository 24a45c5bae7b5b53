#ifndef TESTS_ROUNDTRIP_ELEMENTORDER_H
#define TESTS_ROUNDTRIP_ELEMENTORDER_H

#include "support/Folder.h"

#include <array>
#include <cstddef>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

namespace ElementOrder {

using Point = std::array<double, 3>;

/// An element of a format, and where its nodes are.
struct Element
{
    /// The format's name or number of the type.
    std::string type;
    /// Such as "wedge"; its corners are numbered as those of a model's element.
    std::string shape;
    /// Each node, in the order of the format, by the corners that it is in the middle of: "1 2 12".
    /// A corner that stands twice counts twice.
    std::string nodes;
};

/// The nodes of the element, skewed, so that no two edges are alike. They are numbered from 1 by
/// their places.
std::vector<Point> pointsOf(Element const& element);

/// What the fields "FIRST" and "SECOND" of the file are at a point.
double first(Point const& point);
double second(Point const& point);

/// Writes a file with this one element, and the two fields if the format has values on nodes. The
/// file may be a model already.
using Writer = std::function<std::filesystem::path(Support::Folder const&, Element const&)>;

struct Expectation
{
    /// Of the element in a model; empty when dimension and number of nodes tell it.
    std::string elementType;
    bool hasFields = true;
    /// Whether it can be exported.
    bool isInVtk = true;
};

/// Expects that the file, translated and then exported, has the element with all its nodes where
/// docs/model-layout.md and VTK have them, of its true volume and not inside out.
void expectInOrder(Element const& element, Writer const& write,
                   Expectation const& expectation = Expectation());

} // namespace ElementOrder

#endif
