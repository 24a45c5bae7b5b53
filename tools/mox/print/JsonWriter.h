#ifndef MOX_PRINT_JSONWRITER_H
#define MOX_PRINT_JSONWRITER_H

#include <cstdint>
#include <ostream>
#include <string>
#include <type_traits>
#include <vector>

namespace Mox {

/// Writes a JSON document as it goes along, so that no document has to fit into memory.
///
/// Numbers are as short as they can be read back. Those that JSON does not have are the strings
/// "NaN", "Infinity" and "-Infinity". Bytes that are no UTF-8 become U+FFFD.
///
///     JsonWriter json(std::cout);
///     json.beginObject().member("name", node.name).key("datasets").beginArray();
///     ...
///     json.endArray().endObject();
class JsonWriter
{
public:
    /// What an array or object looks like: each value on a line of its own, or all on one line.
    enum class Layout
    {
        Lines,
        OneLine
    };
    static constexpr Layout OneLine = Layout::OneLine;

    explicit JsonWriter(std::ostream& out);

    JsonWriter& beginObject(Layout layout = Layout::Lines);
    JsonWriter& endObject();
    JsonWriter& beginArray(Layout layout = Layout::Lines);
    JsonWriter& endArray();

    JsonWriter& key(std::string const& name);
    JsonWriter& value(std::string const& text);
    JsonWriter& value(char const* text);
    JsonWriter& value(float number);
    JsonWriter& value(double number);
    JsonWriter& value(bool flag);
    JsonWriter& null();

    template <typename Integer, typename = std::enable_if_t<std::is_integral_v<Integer>>>
    JsonWriter& value(Integer number)
    {
        return write(std::to_string(number));
    }

    template <typename Value>
    JsonWriter& member(std::string const& name, Value const& content)
    {
        return key(name).value(content);
    }

    /// An array of values, on one line.
    template <typename Values>
    JsonWriter& values(Values const& all)
    {
        beginArray(Layout::OneLine);
        for (auto const& one : all)
            value(one);
        return endArray();
    }

private:
    struct Level
    {
        Layout layout = Layout::Lines;
        bool isEmpty = true;
    };

    JsonWriter& begin(char bracket, Layout layout);
    JsonWriter& end(char bracket);
    JsonWriter& write(std::string const& text);
    void beginItem();
    void breakLine();

    std::ostream& out_;
    std::vector<Level> levels_;
    bool followsKey_ = false;
};

} // namespace Mox

#endif
