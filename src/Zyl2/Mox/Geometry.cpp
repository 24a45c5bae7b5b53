// What a geometry adds to the light block:
//
//     number of variables, 4
//     for each variable:
//         name, string
//         type word, 4                 variable type in the low 24 bits, element code in the high 8
//         link flag, 1
//         when linked:
//             linked node id, 4
//             linked variable index, 4
//         otherwise:
//             value count, 4           rows times width
//             width, 1
//             two flags, 1 each
//             two floats, 4 each
//             flag, 1
//             data position, 8         in the untransformed bytes of the heavy block
//         vibration flag, 1
//
// The variable's attributes go to the attributes block, in the same order.

#include "Zyl2/Mox/Geometry.h"

#include "Zyl2/Exception/Raise.h"
#include "Zyl2/Mox/TargetVersion.h"
#include "Zyl2/Mox/WriteAttributesToWvf.h"

#include <algorithm>
#include <array>

namespace Zyl2Mox {

namespace {

namespace GeometrySites = Zyl2::Exception::Sites::Geometry;
constexpr std::uint32_t AnyType = 4294967295U;

/// Keys that describe the source of the data rather than the variable.
bool IsSourceAttribute(std::string const& key)
{
    static constexpr std::array<char const*, 5> keys{"Complex", "Contents", "DataSource",
                                                     "DataType", "Structure"};
    return key.compare(0, 5, "Link.") == 0 ||
           std::any_of(keys.begin(), keys.end(), [&key](char const* name) { return key == name; });
}

std::uint32_t TypeWord(Geometry::VarStruct const& variable)
{
    auto const type = static_cast<std::uint32_t>(variable.type);
    if (type == AnyType)
        return type;
    return (type & 0x00FFFFFFU) | static_cast<std::uint32_t>(variable.array.kind) << 24U;
}

} // namespace

Geometry::Geometry(std::string const& name) : Node(name) {}

std::string Geometry::GetType() const
{
    return "Geometry";
}

std::string Geometry::GetVersion() const
{
    return IsOlderLayout() ? "0.6" : "0.7";
}

void Geometry::Load(std::string const& /*path*/) {}

void Geometry::Save() {}

void Geometry::ProcessAttributes(VarStruct& variable, Zyl2Util::AttributeList const& attributes)
{
    auto const category = attributes.find("Category");
    variable.vibration = category != attributes.end() && category->second.IsText("Vibration");
    for (auto const& [key, value] : attributes)
        if (!IsSourceAttribute(key))
            variable.attributes[key] = value;
}

std::uint32_t Geometry::FindOrAddVariable(std::string const& name)
{
    Content& content = GetContent();
    auto const found = content.variableIndices.find(name);
    if (found != content.variableIndices.end())
        return found->second;
    auto const index = static_cast<std::uint32_t>(content.variables.size());
    VarStruct variable;
    variable.name = name;
    content.variables.push_back(std::move(variable));
    try {
        content.variableIndices.emplace(name, index);
    } catch (...) {
        content.variables.pop_back();
        throw;
    }
    return index;
}

void Geometry::ClearDatasets()
{
    if (content_ != nullptr)
        content_->datasets.clear();
}

Geometry::Content& Geometry::GetContent()
{
    if (content_ == nullptr)
        content_ = std::make_unique<Content>();
    return *content_;
}

Geometry::Content const& Geometry::GetContent() const
{
    static Content const nothing;
    return content_ == nullptr ? nothing : *content_;
}

void Geometry::WriteWv(Zyl2Wvf::WvFile& file, std::string const& lightBlock,
                       std::string const& heavyBlock, std::string const& attributesBlock) const
{
    std::string const version = GetVersion();
    if (version != "0.5" && version != "0.6" && version != "0.7") {
        WriteWv_l05(file, lightBlock, heavyBlock, attributesBlock);
        return;
    }
    Zyl2Wvf::Index& index = file.GetIndex();
    index.Put<int>(lightBlock, static_cast<int>(GetVariables().size()));
    for (VarStruct const& variable : GetVariables()) {
        WriteHeader(index, lightBlock, variable, version == "0.7");
        Zyl2Util::WriteAttributesToWvf(file, attributesBlock, variable.attributes);
    }
}

void Geometry::WriteWv_l05(Zyl2Wvf::WvFile& file, std::string const& lightBlock,
                           std::string const& /*heavyBlock*/,
                           std::string const& attributesBlock) const
{
    Zyl2Wvf::Index& index = file.GetIndex();
    index.Put<int>(lightBlock, static_cast<int>(GetVariables().size()));
    for (VarStruct const& variable : GetVariables()) {
        std::uint64_t const position = GetPosition(variable, GeometrySites::NoPositionInOldLayout);
        index.Put<std::string>(lightBlock, variable.name);
        index.Put<unsigned int>(lightBlock, static_cast<std::uint32_t>(variable.type));
        index.Put<int>(lightBlock, variable.array.valueCount);
        index.Put<unsigned char>(lightBlock, variable.array.width);
        index.Put<unsigned int>(lightBlock, static_cast<std::uint32_t>(position));
        Zyl2Util::WriteAttributesToWvf(file, attributesBlock, variable.attributes);
    }
}

void Geometry::WriteHeader(Zyl2Wvf::Index& index, std::string const& lightBlock,
                           VarStruct const& variable, bool widePosition) const
{
    index.Put<std::string>(lightBlock, variable.name);
    index.Put<unsigned int>(lightBlock, TypeWord(variable));
    index.Put<bool>(lightBlock, variable.linked);
    if (variable.linked) {
        index.Put<unsigned int>(lightBlock, variable.linkedNode);
        index.Put<unsigned int>(lightBlock, variable.linkedVariable);
    } else {
        WriteDescription(index, lightBlock, variable, widePosition);
    }
    index.Put<bool>(lightBlock, variable.vibration);
}

void Geometry::WriteDescription(Zyl2Wvf::Index& index, std::string const& lightBlock,
                                VarStruct const& variable, bool widePosition) const
{
    ArrayDescription const& array = variable.array;
    index.Put<int>(lightBlock, array.valueCount);
    index.Put<unsigned char>(lightBlock, array.width);
    for (bool const flag : array.flags)
        index.Put<bool>(lightBlock, flag);
    for (float const value : array.floats)
        index.Put<float>(lightBlock, value);
    index.Put<bool>(lightBlock, array.lastFlag);
    std::uint64_t const position = GetPosition(variable, GeometrySites::NoPosition);
    if (widePosition)
        index.Put<unsigned long>(lightBlock, position);
    else
        index.Put<unsigned int>(lightBlock, static_cast<std::uint32_t>(position));
}

std::uint64_t
Geometry::GetPosition(VarStruct const& variable,
                      Zyl2::Exception::Site<Zyl2::Exception::KeyNotFound> const& site) const
{
    auto const& datasets = GetContent().datasets;
    auto const found = datasets.find(variable.name);
    if (found == datasets.end())
        Zyl2::Exception::raise(site);
    return found->second;
}

} // namespace Zyl2Mox
