#ifndef ZYL2_MOX_BLOCKNAMES_H
#define ZYL2_MOX_BLOCKNAMES_H

namespace Zyl2Mox {

/// Keys that a model is saved under.
namespace BlockNames {

constexpr char const* MoxTree = "Mox Tree";
constexpr char const* LightData = "Light Data";
constexpr char const* HeavyData = "Heavy Data";
constexpr char const* Attributes = "Attributes";
constexpr char const* Resources = "Resources";
constexpr char const* GlobalInformation = "Global Information";
/// Never filled by this writer, marked for compression all the same.
constexpr char const* ViewPoints = "View Points";

} // namespace BlockNames

} // namespace Zyl2Mox

#endif
