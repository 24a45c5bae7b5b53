#ifndef TESTS_READ_ENSIGHT_ENCODER_H
#define TESTS_READ_ENSIGHT_ENCODER_H

#include <read/ensight/DataFile.h>

#include <cstdint>
#include <cstdio>
#include <cstring>
#include <string>
#include <utility>
#include <vector>

/// Makes the content of a data file of EnSight.
class Encoder
{
public:
    using Format = EnSight::DataFile::Format;

    Encoder(Format format, bool isGold, bool isBigEndian)
        : format_(format), isGold_(isGold), isBigEndian_(isBigEndian)
    {}

    static std::string nameOf(Format format)
    {
        if (format == Format::Text)
            return "Text";
        return format == Format::C ? "C" : "Fortran";
    }

    bool isText() const { return format_ == Format::Text; }
    bool isGold() const { return isGold_; }
    std::string const& content() const { return content_; }

    void append(std::string const& content) { content_ += content; }

    /// Of the line that says what kind of file it is, which only binary meshes have.
    std::size_t formatLength() const { return formatLength_; }

    /// Of a mesh.
    void format()
    {
        if (!isText())
            line(format_ == Format::C ? "C Binary" : "Fortran Binary");
        formatLength_ = content_.size();
    }

    void line(std::string text)
    {
        if (isText()) {
            content_ += text + "\n";
            return;
        }
        constexpr std::size_t length = 80;
        text.resize(length, '\0');
        record(text);
    }

    void part(int number)
    {
        line(isGold_ ? "part" : "part " + std::to_string(number));
        if (isGold_)
            integers({number}, 1);
    }

    void integers(std::vector<int> const& values, std::size_t perLine)
    {
        numbers(values, perLine, [this](int value) { return printed("%*d", width(), value); });
    }

    void reals(std::vector<float> const& values) { realsInLines(values, isGold_ ? 1 : 6); }

    void realsInLines(std::vector<float> const& values, std::size_t perLine)
    {
        numbers(values, perLine, [](float value) { return printed("%12.5e", value); });
    }

    /// The numbers of each row follow its id; in binary files all ids come first.
    void rowsWithIds(std::vector<int> const& ids, std::vector<std::vector<float>> const& rows)
    {
        if (!isText())
            integers(ids, 1);
        std::vector<float> all;
        for (std::size_t i = 0; i < rows.size(); ++i) {
            if (isText())
                content_ += printed("%*d", width(), ids[i]);
            if (isText())
                realsInLines(rows[i], rows[i].size());
            all.insert(all.end(), rows[i].begin(), rows[i].end());
        }
        if (!isText())
            reals(all);
    }

private:
    template <typename... Arguments>
    static std::string printed(char const* format, Arguments... arguments)
    {
        char text[64];
        std::snprintf(text, sizeof(text), format, arguments...);
        return text;
    }

    int width() const { return isGold_ ? 10 : 8; }

    template <typename Value, typename Print>
    void numbers(std::vector<Value> const& values, std::size_t perLine, Print const& print)
    {
        if (values.empty())
            return;
        if (!isText()) {
            std::string bytes(values.size() * sizeof(Value), '\0');
            std::memcpy(bytes.data(), values.data(), bytes.size());
            orderBytes(bytes);
            record(bytes);
            return;
        }
        for (std::size_t i = 0; i < values.size(); ++i)
            content_ +=
                print(values[i]) + ((i + 1) % perLine == 0 || i + 1 == values.size() ? "\n" : "");
    }

    void record(std::string const& bytes)
    {
        auto const length = static_cast<std::uint32_t>(bytes.size());
        std::string marker(sizeof(length), '\0');
        std::memcpy(marker.data(), &length, sizeof(length));
        orderBytes(marker);
        content_ += format_ == Format::Fortran ? marker + bytes + marker : bytes;
    }

    /// Of numbers of four bytes each.
    void orderBytes(std::string& bytes) const
    {
        for (std::size_t i = 0; isBigEndian_ && i < bytes.size(); i += sizeof(std::uint32_t)) {
            std::swap(bytes[i], bytes[i + 3]);
            std::swap(bytes[i + 1], bytes[i + 2]);
        }
    }

    Format format_;
    bool isGold_;
    bool isBigEndian_;
    std::string content_;
    std::size_t formatLength_ = 0;
};

#endif
