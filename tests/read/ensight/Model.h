#ifndef TESTS_READ_ENSIGHT_MODEL_H
#define TESTS_READ_ENSIGHT_MODEL_H

#include "Encoder.h"

#include <array>
#include <cstddef>
#include <optional>
#include <string>
#include <vector>

constexpr std::size_t axisCount = 3;

/// What a case of EnSight holds, and how its files hold it.
struct Model
{
    using Format = Encoder::Format;
    using Nodes = std::vector<int>;
    /// Of all components of a row, then of the next.
    using Reals = std::vector<float>;

    enum class Layout
    {
        OneStep,
        FilePerStep,
        /// All of them, or the first in a file and the others in another one.
        StepsInOneFile,
        StepsInTwoFiles
    };

    /// How the files of the steps are counted.
    enum class Numbering
    {
        Running,
        Spread,
        Listed
    };

    /// How the values are written that are not a number.
    enum class Gaps
    {
        None,
        Marked,
        LeftOut
    };

    /// Of one type. Nodes are counted from 1.
    struct Elements
    {
        std::string type;
        /// Of each element; of polyhedra, of each face.
        std::vector<Nodes> nodes;
        /// How many faces each polyhedron has.
        Nodes faces{};

        bool arePolyhedra() const { return type.find("nfaced") != std::string::npos; }
        std::size_t count() const { return arePolyhedra() ? faces.size() : nodes.size(); }
        bool isKept() const { return !arePolyhedra() && type.rfind("g_", 0) != 0; }
    };

    struct Part
    {
        int number = 0;
        std::string name;
        bool isStructured = false;
        /// Whether it is points in a file of their own.
        bool isMeasured = false;
        /// Of a structured part.
        std::string kind;
        std::array<int, 3> size{};
        /// Of a structured part, one for each node, if there are any.
        Nodes blankingMarks;
        /// Of a structured part, one for each cell, if there are any.
        Nodes ghostFlags;
        /// Whether a structured part is a piece of a larger one.
        bool hasRange = false;
        /// Of a structured part.
        bool hasIds = false;
        std::vector<Elements> elements;
        std::size_t nodeCount = 0;
        /// Of each step.
        std::vector<Reals> coordinates;

        std::size_t elementCount() const;
        /// Of a structured part.
        std::vector<Nodes> cells() const;
        /// Whether a model gets the element.
        bool isKept(std::size_t element) const;
    };

    struct Variable
    {
        std::string name;
        /// Of the real and of the imaginary part each.
        std::size_t components = 1;
        bool isComplex = false;
        bool isPerElement = false;
        bool isMeasured = false;
        Gaps gaps = Gaps::None;
        std::size_t timeSet = 0;
        /// Of each part of each step; none where a part has none.
        std::vector<std::vector<Reals>> values;

        /// Of a row of values, which has the imaginary part behind the real one.
        std::size_t columns() const { return isComplex ? 2 * components : components; }
        /// The real and the imaginary part of a complex one, with that added to its name.
        std::vector<Variable> halves(std::string const& real, std::string const& imaginary) const;
    };

    /// Of each step of a time set.
    struct Constant
    {
        std::string name;
        std::size_t timeSet = 0;
        Reals values;
    };

    Format format = Format::Text;
    bool isBigEndian = false;
    bool isGold = true;
    Layout layout = Layout::OneStep;
    std::size_t stepCount = 1;
    /// In which steps there is something new. The first one is of what never changes.
    std::vector<std::vector<std::size_t>> timeSets = {{0}};
    Numbering numbering = Numbering::Running;
    std::size_t meshTimeSet = 0;
    bool isMeshMoving = false;
    /// The only step whose mesh has elements, if it is only one.
    std::optional<std::size_t> stepOfElements;
    std::string nodeIds = "off";
    std::string elementIds = "off";
    std::vector<Part> parts;
    std::vector<Variable> variables;
    std::vector<Constant> constants;

    bool isSeries() const
    {
        return layout == Layout::StepsInOneFile || layout == Layout::StepsInTwoFiles;
    }
    /// Of nodes and elements of all that have ids.
    static int nodeId(std::size_t row, std::size_t count);
    static int elementId(std::size_t row);
    bool hasNodeIds() const { return areIds(nodeIds); }
    bool hasElementIds() const { return areIds(elementIds); }
    /// Before Gold, unstructured parts share their nodes.
    bool sharesNodesOf(Part const& part) const
    {
        return !isGold && !part.isStructured && !part.isMeasured;
    }

    /// What a message needs to tell the case.
    std::string summary() const;

private:
    static bool areIds(std::string const& mode) { return mode == "given" || mode == "ignore"; }
};

#endif
