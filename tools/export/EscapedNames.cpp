#include "EscapedNames.h"

#include <vtkAbstractArray.h>
#include <vtkCellData.h>
#include <vtkPointData.h>
#include <vtkUnstructuredGrid.h>

namespace Export {

namespace {

std::string escaped(char character)
{
    switch (character) {
    case '&':
        return "&amp;";
    case '<':
        return "&lt;";
    case '>':
        return "&gt;";
    case '"':
        return "&quot;";
    // White space other than blanks would be read as blanks.
    case '\t':
        return "&#9;";
    case '\n':
        return "&#10;";
    case '\r':
        return "&#13;";
    default:
        return {character};
    }
}

std::string escaped(std::string const& text)
{
    std::string result;
    for (char const character : text)
        result += escaped(character);
    return result;
}

} // namespace

EscapedNames::EscapedNames(vtkUnstructuredGrid& grid)
{
    escape(*grid.GetPointData());
    escape(*grid.GetCellData());
    escape(*grid.GetFieldData());
}

EscapedNames::~EscapedNames()
{
    for (auto const& [array, name] : names_)
        array->SetName(name.c_str());
}

void EscapedNames::escape(vtkFieldData& data)
{
    for (int i = 0; i < data.GetNumberOfArrays(); ++i) {
        vtkAbstractArray* const array = data.GetAbstractArray(i);
        std::string const name = array->GetName();
        if (names_.emplace(array, name).second)
            array->SetName(escaped(name).c_str());
    }
}

} // namespace Export
