// An attribute list is six vectors, each a count of 4 bytes and its elements:
//
//     names        strings, in key order
//     type tags    1 each: 0 integer, 1 float, 2 text, 3 double
//     integers     4 each: the values of tag 0, in key order
//     floats       4 each: the values of tag 1
//     doubles      8 each: the values of tag 3
//     texts        strings: the values of tag 2
//
// A reader walks the tags and takes the next element of the vector that the tag names.

#include "Zyl2/Mox/WriteAttributesToWvf.h"

#include <cstdint>
#include <vector>

namespace Zyl2Util {

namespace {

struct Columns
{
    std::vector<std::string> names;
    std::vector<std::uint8_t> tags;
    std::vector<std::uint32_t> integers;
    std::vector<float> floats;
    std::vector<double> doubles;
    std::vector<std::string> texts;
};

void AddValue(Columns& columns, AttributeValue const& value)
{
    switch (value.GetTag()) {
    case AttributeValue::Integer:
        columns.integers.push_back(value.GetInteger());
        break;
    case AttributeValue::Float:
        columns.floats.push_back(value.GetFloat());
        break;
    case AttributeValue::Text:
        columns.texts.push_back(value.GetText());
        break;
    case AttributeValue::Double:
        columns.doubles.push_back(value.GetDouble());
        break;
    }
}

Columns ColumnsOf(AttributeList const& list)
{
    Columns columns;
    for (auto const& [name, value] : list) {
        columns.names.push_back(name);
        columns.tags.push_back(value.GetTag());
        AddValue(columns, value);
    }
    return columns;
}

} // namespace

void WriteAttributesToWvf(Zyl2Wvf::WvFile& file, std::string const& blockName,
                          AttributeList const& list)
{
    Columns const columns = ColumnsOf(list);
    Zyl2Wvf::Index& index = file.GetIndex();
    index.Put(blockName, columns.names);
    index.Put(blockName, columns.tags);
    index.Put(blockName, columns.integers);
    index.Put(blockName, columns.floats);
    index.Put(blockName, columns.doubles);
    index.Put(blockName, columns.texts);
}

} // namespace Zyl2Util
