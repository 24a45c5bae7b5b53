#ifndef ZYL2_MOX_GEOMETRY_H
#define ZYL2_MOX_GEOMETRY_H

#include "Zyl2/Mox/ArrayDescription.h"
#include "Zyl2/Mox/Node.h"
#include "Zyl2/Util/AttributeList.h"
#include "Zyl2/Wvf/WvFile.h"

#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

namespace Zyl2Mox {

/// Data of a shape: its named variables, and where their values are.
class Geometry : public Node
{
public:
    /// How the values of a variable are laid out. The file stores the number alone: 1 coordinates;
    /// 4, 5, 6 connectivity of one, two, three dimensions; 9 nodes per element; 12 to 28 results.
    enum class VariableType : std::uint32_t
    {
    };

    struct VarStruct
    {
        std::string name;
        VariableType type{};
        /// Whether the attributes say "Category" = "Vibration".
        bool vibration = false;
        Zyl2Util::AttributeList attributes;
        ArrayDescription array;
        /// Whether the variable shares the data of the one that the next two members name.
        bool linked = false;
        std::uint32_t linkedNode = 0;
        std::uint32_t linkedVariable = 0;
    };

    explicit Geometry(std::string const& name);

    std::string GetType() const override;
    std::string GetVersion() const override;
    void Load(std::string const& path) override;
    void Save() override;

    /// Files the attributes that belong to the variable itself, and notes whether it vibrates.
    static void ProcessAttributes(VarStruct& variable, Zyl2Util::AttributeList const& attributes);

    /// Index of the variable of that name, which is added when there is none.
    std::uint32_t FindOrAddVariable(std::string const& name);

    /// \throws std::out_of_range no variable of that index
    VarStruct& GetVariable(std::uint32_t index) { return GetContent().variables.at(index); }
    std::vector<VarStruct> const& GetVariables() const { return GetContent().variables; }

    /// Position of each variable's values in the stream of heavy data.
    std::map<std::string, std::uint64_t>& GetDatasets() { return GetContent().datasets; }
    void ClearDatasets();

    /// Writes a header for each variable into the light block, and its attributes.
    /// \throws KeyNotFound a variable has no position
    void WriteWv(Zyl2Wvf::WvFile& file, std::string const& lightBlock,
                 std::string const& heavyBlock, std::string const& attributesBlock) const;

    /// The layout of geometries before version "0.5": headers without links and flags.
    /// \throws KeyNotFound a variable has no position
    void WriteWv_l05(Zyl2Wvf::WvFile& file, std::string const& lightBlock,
                     std::string const& heavyBlock, std::string const& attributesBlock) const;

private:
    void WriteHeader(Zyl2Wvf::Index& index, std::string const& lightBlock,
                     VarStruct const& variable, bool widePosition) const;
    void WriteDescription(Zyl2Wvf::Index& index, std::string const& lightBlock,
                          VarStruct const& variable, bool widePosition) const;
    std::uint64_t
    GetPosition(VarStruct const& variable,
                Zyl2::Exception::Site<Zyl2::Exception::KeyNotFound> const& site) const;

    struct Content
    {
        std::vector<VarStruct> variables;
        std::unordered_map<std::string, std::uint32_t> variableIndices;
        std::map<std::string, std::uint64_t> datasets;
    };

    Content& GetContent();
    Content const& GetContent() const;

    /// Made for the first variable: an assembly may have millions of shapes without data.
    std::unique_ptr<Content> content_;
};

} // namespace Zyl2Mox

#endif
