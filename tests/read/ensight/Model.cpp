#include "Model.h"

#include <algorithm>

namespace {

/// Along one direction, then round a face, then round the face opposite.
Model::Nodes cornersOfCell(std::array<int, 3> const& size)
{
    Model::Nodes corners = {1};
    int stride = 1;
    for (int const count : size) {
        Model::Nodes next = corners;
        for (int& node : next)
            node += stride;
        bool const isFace = next.size() == 2;
        if (isFace)
            std::reverse(next.begin(), next.end());
        if (count > 1)
            corners.insert(corners.end(), next.begin(), next.end());
        stride *= count;
    }
    return corners;
}

/// So many columns of each row.
Model::Reals columnsOf(Model::Reals const& rows, std::size_t columns, std::size_t first,
                       std::size_t count)
{
    Model::Reals values;
    for (std::size_t i = first; i < rows.size(); i += columns)
        values.insert(values.end(), &rows[i], &rows[i] + count);
    return values;
}

std::string summaryOf(Model::Part const& part)
{
    std::string text = " part " + std::to_string(part.number) + " (";
    text += (part.isMeasured ? "measured " : "") + std::to_string(part.nodeCount) + " nodes";
    if (part.isStructured)
        text += " block " + part.kind + (part.blankingMarks.empty() ? "" : " iblanked") +
                (part.ghostFlags.empty() ? "" : " ghosts") + (part.hasRange ? " range" : "");
    for (int const count : part.size)
        text += count == 0 ? "" : " " + std::to_string(count);
    for (Model::Elements const& elements : part.elements)
        text += " " + std::to_string(elements.count()) + " " + elements.type;
    return text + ")";
}

std::string summaryOf(Model::Variable const& variable)
{
    std::string text = " " + variable.name + " (" + (variable.isComplex ? "complex " : "") +
                       std::to_string(variable.components) +
                       (variable.isPerElement ? " per element" : " per node");
    if (variable.timeSet != 1)
        text += ", time set " + std::to_string(variable.timeSet);
    if (variable.gaps != Model::Gaps::None)
        text += variable.gaps == Model::Gaps::Marked ? " undef" : " partial";
    for (Model::Reals const& values : variable.values.front())
        text += values.empty() ? " -" : " +";
    return text + ")";
}

} // namespace

std::size_t Model::Part::elementCount() const
{
    if (isMeasured)
        return nodeCount;
    if (isStructured)
        return cells().size();
    std::size_t count = 0;
    for (Elements const& each : elements)
        count += each.count();
    return count;
}

bool Model::Part::isKept(std::size_t element) const
{
    if (!isStructured) {
        for (Elements const& each : elements) {
            if (element < each.count())
                return each.isKept();
            element -= each.count();
        }
        return true;
    }
    // A blanked node takes away the cells around it.
    Nodes const nodes = cells()[element];
    bool const isBlanked =
        !blankingMarks.empty() && std::any_of(nodes.begin(), nodes.end(), [this](int node) {
            return blankingMarks[static_cast<std::size_t>(node) - 1] == 0;
        });
    return !isBlanked && (ghostFlags.empty() || ghostFlags[element] == 0);
}

/// Other than what nodes would be counted from, and in another order.
int Model::nodeId(std::size_t row, std::size_t count)
{
    return static_cast<int>(10 + count - row);
}

int Model::elementId(std::size_t row)
{
    return static_cast<int>(101 + row);
}

std::vector<Model::Nodes> Model::Part::cells() const
{
    Nodes const corners = cornersOfCell(size);
    std::vector<Nodes> cells;
    for (int z = 0; z < std::max(size[2] - 1, 1); ++z)
        for (int y = 0; y < std::max(size[1] - 1, 1); ++y)
            for (int x = 0; x < std::max(size[0] - 1, 1); ++x) {
                cells.push_back(corners);
                for (int& node : cells.back())
                    node += x + size[0] * (y + size[1] * z);
            }
    return cells;
}

std::string Model::summary() const
{
    std::string text = std::string(isGold ? "Gold " : "EnSight 6 ") + Encoder::nameOf(format) +
                       ", node ids " + nodeIds + ", element ids " + elementIds + ",";
    text += " layout " + std::to_string(static_cast<int>(layout)) + ",";
    if (stepOfElements)
        text += " elements in step " + std::to_string(*stepOfElements) + " only,";
    text += " " + std::to_string(stepCount) + " steps, mesh of time set " +
            std::to_string(meshTimeSet) + ", numbering " +
            std::to_string(static_cast<int>(numbering)) + ",";
    for (Part const& part : parts)
        text += summaryOf(part);
    for (Variable const& variable : variables)
        text += summaryOf(variable);
    return text;
}

std::vector<Model::Variable> Model::Variable::halves(std::string const& real,
                                                     std::string const& imaginary) const
{
    std::vector<Variable> halves(2, *this);
    halves[0].name += real;
    halves[1].name += imaginary;
    for (std::size_t i = 0; i < halves.size(); ++i) {
        halves[i].isComplex = false;
        for (std::vector<Reals>& ofParts : halves[i].values)
            for (Reals& rows : ofParts)
                rows = columnsOf(rows, columns(), i * components, components);
    }
    return halves;
}
