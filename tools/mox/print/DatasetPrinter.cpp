// Array file of NumPy, format 1.0:
//
//    0       6  signature: 93 "NUMPY"
//    6       2  version: 01 00
//    8       2  uint16 n, length of the description, so that 10 + n is a multiple of 64
//   10       n  description, filled up with blanks, and a line end:
//               {'descr': '<f4', 'fortran_order': False, 'shape': (rows, width), }
//   10 + n      the values, row after row

#include "DatasetPrinter.h"

#include "moxread/LittleEndian.h"

#include <array>
#include <charconv>
#include <cmath>

namespace Mox {

namespace {

constexpr std::size_t pieceSize = std::size_t{1} << 16U;
constexpr std::size_t npyFrame = 10;
constexpr std::size_t npyAlignment = 64;

template <typename Number>
void appendNumber(std::string& to, Number value)
{
    std::array<char, 32> text = {};
    auto const result = std::to_chars(text.data(), text.data() + text.size(), value);
    to.append(text.data(), result.ptr);
}

void appendFloat(std::string& to, float value)
{
    // std::to_chars may print a NaN with its sign, "-nan", which says nothing.
    if (std::isnan(value))
        to += "nan";
    else
        appendNumber(to, value);
}

void appendJsonFloat(std::string& to, float value)
{
    if (std::isnan(value))
        to += "\"NaN\"";
    else if (std::isinf(value))
        to += value > 0 ? "\"Infinity\"" : "\"-Infinity\"";
    else
        appendNumber(to, value);
}

void appendLittleEndian(std::string& to, std::uint32_t word)
{
    for (unsigned byte = 0; byte < sizeof word; ++byte)
        to += static_cast<char>(word >> (8U * byte) & 0xFFU);
}

std::string csvField(std::string const& text)
{
    if (text.find_first_of(",\"\r\n") == std::string::npos)
        return text;
    std::string field = "\"";
    for (char const character : text)
        field += character == '"' ? std::string(2, character) : std::string(1, character);
    return field + '"';
}

} // namespace

DatasetPrinter::DatasetPrinter(MoxRead::Dataset const& dataset, std::ostream& out,
                               Common::Progress& progress)
    : dataset_(dataset), out_(out), progress_(progress)
{}

void DatasetPrinter::writeText() const
{
    writeRows([this](std::string& to, std::size_t row) {
        appendValues(to, row, ' ');
        to += '\n';
    });
}

void DatasetPrinter::writeCsv(std::vector<std::string> const& columns) const
{
    for (std::size_t i = 0; i < columns.size(); ++i)
        out_ << (i == 0 ? "" : ",") << csvField(columns[i]);
    out_ << '\n';
    writeRows([this](std::string& to, std::size_t row) {
        appendValues(to, row, ',');
        to += '\n';
    });
}

void DatasetPrinter::writeNpy() const
{
    out_ << npyHeader();
    writeRows([this](std::string& to, std::size_t row) {
        for (std::size_t column = 0; column < dataset_.width; ++column)
            appendLittleEndian(to, dataset_.words[row * dataset_.width + column]);
    });
}

void DatasetPrinter::writeJsonRows() const
{
    writeRows([this](std::string& to, std::size_t row) {
        to += row == 0 ? "\n    " : ",\n    ";
        appendJsonRow(to, row);
    });
}

void DatasetPrinter::writeRows(AppendRow const& append) const
{
    std::size_t const rows = dataset_.rows();
    std::string piece;
    progress_.show(0, rows);
    for (std::size_t row = 0; row < rows && out_; ++row) {
        append(piece, row);
        if (piece.size() < pieceSize)
            continue;
        out_ << piece;
        piece.clear();
        progress_.show(row, rows);
    }
    out_ << piece;
}

void DatasetPrinter::appendValues(std::string& to, std::size_t row, char separator) const
{
    for (std::size_t column = 0; column < dataset_.width; ++column) {
        std::uint32_t const word = dataset_.words[row * dataset_.width + column];
        if (column > 0)
            to += separator;
        if (dataset_.elementType == MoxRead::ElementType::Float)
            appendFloat(to, MoxRead::floatFromBits(word));
        else
            appendNumber(to, word);
    }
}

void DatasetPrinter::appendJsonRow(std::string& to, std::size_t row) const
{
    bool const isArray = dataset_.width > 1;
    to += isArray ? "[" : "";
    for (std::size_t column = 0; column < dataset_.width; ++column) {
        std::uint32_t const word = dataset_.words[row * dataset_.width + column];
        to += column == 0 ? "" : ", ";
        if (dataset_.elementType == MoxRead::ElementType::Float)
            appendJsonFloat(to, MoxRead::floatFromBits(word));
        else
            appendNumber(to, word);
    }
    to += isArray ? "]" : "";
}

std::string DatasetPrinter::npyHeader() const
{
    char const* const type = dataset_.elementType == MoxRead::ElementType::Float ? "<f4" : "<u4";
    std::string const rows = std::to_string(dataset_.rows());
    std::string const shape =
        dataset_.width == 1 ? rows + "," : rows + ", " + std::to_string(dataset_.width);
    std::string description = std::string("{'descr': '") + type +
                              "', 'fortran_order': False, 'shape': (" + shape + "), }";
    std::size_t const used = npyFrame + description.size() + 1;
    description += std::string((npyAlignment - used % npyAlignment) % npyAlignment, ' ') + '\n';
    std::string const frame("\x93NUMPY\x01\x00", 8);
    return frame + static_cast<char>(description.size() & 0xFFU) +
           static_cast<char>(description.size() >> 8U) + description;
}

} // namespace Mox
