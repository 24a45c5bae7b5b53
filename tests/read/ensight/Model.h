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
    /// Values row after row, each row with all of its components.
    using Reals = std::vector<float>;

    enum class Layout
    {
        OneStep,
        FilePerStep,
        /// All steps in one file, or the first step in one file and the others in another.
        StepsInOneFile,
        StepsInTwoFiles
    };

    /// How the numbers in the names of the files of steps are given in the case.
    enum class Numbering
    {
        Running,
        Spread,
        Listed
    };

    /// How undefined values (NaN in a model) are written to the files.
    enum class Gaps
    {
        None,
        Marked,
        LeftOut
    };

    /// Elements of one type. Their nodes are numbered from 1.
    struct Elements
    {
        std::string type;
        /// The nodes of each element or, where these are polyhedra, of each face.
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
        /// Whether the part is the measured points, which have a file of their own.
        bool isMeasured = false;
        /// Which kind of structured part it is, and its size in nodes along each axis; only there.
        std::string kind;
        std::array<int, 3> size{};
        /// A mark for each node of a structured part with blanked nodes; else empty.
        Nodes blankingMarks;
        /// A flag for each cell of a structured part with ghost cells; else empty.
        Nodes ghostFlags;
        /// Whether a structured part is a piece of a larger one.
        bool hasRange = false;
        /// Whether a structured part has ids where the case gives them.
        bool hasIds = false;
        std::vector<Elements> elements;
        std::size_t nodeCount = 0;
        /// Coordinates of all nodes, for each step.
        std::vector<Reals> coordinates;

        std::size_t elementCount() const;
        /// The nodes of each cell of a structured part.
        std::vector<Nodes> cells() const;
        /// Whether the translated model has the element.
        bool isKept(std::size_t element) const;
    };

    struct Variable
    {
        std::string name;
        /// How many the real part has; the imaginary part of a complex variable has as many.
        std::size_t components = 1;
        bool isComplex = false;
        bool isPerElement = false;
        bool isMeasured = false;
        Gaps gaps = Gaps::None;
        std::size_t timeSet = 0;
        /// By step and part; empty where the variable has no values on the part.
        std::vector<std::vector<Reals>> values;

        /// Length of a row of values; a complex one has the imaginary parts behind the real ones.
        std::size_t columns() const { return isComplex ? 2 * components : components; }
        /// A complex variable as two: `real` and `imaginary` are added to its name.
        std::vector<Variable> halves(std::string const& real, std::string const& imaginary) const;
    };

    /// A constant of the case: one value for each step of a time set.
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
    /// The steps in which each time set has new values. The first set is for what never changes.
    std::vector<std::vector<std::size_t>> timeSets = {{0}};
    Numbering numbering = Numbering::Running;
    std::size_t meshTimeSet = 0;
    bool isMeshMoving = false;
    /// Set where only this step's mesh has elements; else every step's mesh has them.
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
    /// The ids that are given in cases with ids of nodes, and of elements.
    static int nodeId(std::size_t row, std::size_t count);
    static int elementId(std::size_t row);
    bool hasNodeIds() const { return areIds(nodeIds); }
    bool hasElementIds() const { return areIds(elementIds); }
    /// Before Gold, unstructured parts share their nodes.
    bool sharesNodesOf(Part const& part) const
    {
        return !isGold && !part.isStructured && !part.isMeasured;
    }

    /// Describes the case in a message, so that it can be told from the others.
    std::string summary() const;

private:
    static bool areIds(std::string const& mode) { return mode == "given" || mode == "ignore"; }
};

#endif
