#include "ClassicHeader.h"

#include "exchange/Error.h"

#include <algorithm>
#include <fstream>
#include <limits>
#include <vector>

namespace Exodus {

namespace {

constexpr std::uint64_t unlimited = 0;
constexpr std::uint64_t absent = 0;
constexpr std::uint64_t dimensionTag = 10;
constexpr std::uint64_t variableTag = 11;
constexpr std::uint64_t attributeTag = 12;
constexpr std::uint64_t streaming = std::numeric_limits<std::uint32_t>::max();

[[noreturn]] void refuse()
{
    throw Exchange::Error("The file is damaged: its header is not sound.");
}

std::uint64_t product(std::uint64_t a, std::uint64_t b)
{
    if (b != 0 && a > std::numeric_limits<std::uint64_t>::max() / b)
        refuse();
    return a * b;
}

std::uint64_t sum(std::uint64_t a, std::uint64_t b)
{
    if (a > std::numeric_limits<std::uint64_t>::max() - b)
        refuse();
    return a + b;
}

std::uint64_t padded(std::uint64_t size)
{
    return sum(size, 3) / 4 * 4;
}

std::uint64_t sizeOfType(std::uint64_t type)
{
    static std::vector<std::uint64_t> const sizes = {0, 1, 1, 2, 4, 4, 8, 1, 2, 4, 8, 8};
    if (type == 0 || type >= sizes.size())
        refuse();
    return sizes[type];
}

struct Variable
{
    bool isRecord = false;
    /// Bytes of the variable, or of one record of a variable that has records.
    std::uint64_t size = 0;
    std::uint64_t begin = 0;
};

class HeaderReader
{
public:
    explicit HeaderReader(std::filesystem::path const& path) : file_(path, std::ios::binary) {}

    bool readMagic()
    {
        char magic[4] = {};
        file_.read(magic, sizeof(magic));
        version_ = static_cast<unsigned char>(magic[3]);
        return file_ && std::equal(magic, magic + 3, "CDF") &&
               (version_ == 1 || version_ == 2 || version_ == 5);
    }

    std::uint64_t size()
    {
        std::uint64_t const records = count();
        readDimensions();
        skipAttributes();
        return sizeOf(readVariables(), isStreaming(records) ? 0 : records);
    }

private:
    bool isStreaming(std::uint64_t records) const
    {
        return records == (version_ == 5 ? std::numeric_limits<std::uint64_t>::max() : streaming);
    }

    std::uint64_t number(int bytes)
    {
        std::uint64_t value = 0;
        for (int i = 0; i < bytes; ++i) {
            int const byte = file_.get();
            if (byte < 0)
                refuse();
            value = value << 8U | static_cast<std::uint64_t>(byte);
        }
        return value;
    }

    std::uint64_t count() { return number(version_ == 5 ? 8 : 4); }
    std::uint64_t offset() { return number(version_ == 1 ? 4 : 8); }

    std::uint64_t listSize(std::uint64_t expectedTag)
    {
        std::uint64_t const tag = number(4);
        std::uint64_t const size = count();
        if (tag != expectedTag && (tag != absent || size != 0))
            refuse();
        return size;
    }

    void skip(std::uint64_t size)
    {
        if (size > static_cast<std::uint64_t>(std::numeric_limits<std::streamoff>::max()))
            refuse();
        file_.seekg(static_cast<std::streamoff>(size), std::ios::cur);
        if (!file_)
            refuse();
    }

    void skipName() { skip(padded(count())); }

    void readDimensions()
    {
        for (std::uint64_t left = listSize(dimensionTag); left != 0; --left) {
            skipName();
            dimensions_.push_back(count());
        }
    }

    void skipAttributes()
    {
        for (std::uint64_t left = listSize(attributeTag); left != 0; --left) {
            skipName();
            std::uint64_t const size = sizeOfType(number(4));
            skip(padded(product(size, count())));
        }
    }

    std::vector<Variable> readVariables()
    {
        std::vector<Variable> variables;
        for (std::uint64_t left = listSize(variableTag); left != 0; --left)
            variables.push_back(readVariable());
        return variables;
    }

    Variable readVariable()
    {
        skipName();
        Variable variable;
        variable.size = 1;
        std::uint64_t const dimensions = count();
        for (std::uint64_t i = 0; i < dimensions; ++i)
            addDimension(variable, count());
        skipAttributes();
        variable.size = product(variable.size, sizeOfType(number(4)));
        count();
        variable.begin = offset();
        return variable;
    }

    void addDimension(Variable& variable, std::uint64_t index) const
    {
        if (index >= dimensions_.size())
            refuse();
        if (dimensions_[index] == unlimited)
            variable.isRecord = true;
        else
            variable.size = product(variable.size, dimensions_[index]);
    }

    /// The records of a single variable follow one another without padding.
    static std::uint64_t recordSize(std::vector<Variable> const& variables)
    {
        std::uint64_t size = 0;
        std::uint64_t count = 0;
        std::uint64_t last = 0;
        for (Variable const& variable : variables) {
            if (!variable.isRecord)
                continue;
            ++count;
            last = variable.size;
            size = sum(size, padded(variable.size));
        }
        return count == 1 ? last : size;
    }

    static std::uint64_t sizeOf(std::vector<Variable> const& variables, std::uint64_t records)
    {
        std::uint64_t const perRecord = recordSize(variables);
        std::uint64_t size = 0;
        for (Variable const& variable : variables) {
            if (variable.isRecord && records == 0)
                continue;
            std::uint64_t const before = variable.isRecord ? product(perRecord, records - 1) : 0;
            size = std::max(size, sum(sum(variable.begin, before), variable.size));
        }
        return size;
    }

    std::ifstream file_;
    int version_ = 0;
    std::vector<std::uint64_t> dimensions_;
};

} // namespace

std::optional<std::uint64_t> classicFileSize(std::filesystem::path const& path)
{
    HeaderReader reader(path);
    if (!reader.readMagic())
        return std::nullopt;
    return reader.size();
}

} // namespace Exodus
