#ifndef READ_FRD_HEADER_H
#define READ_FRD_HEADER_H

#include <cstdint>
#include <map>
#include <string>
#include <vector>

namespace Frd {

/// What a result file says about itself before the mesh.
struct Header
{
    /// Name in the 1C record; solvers often leave it blank.
    std::string modelName;
    /// Texts of the 1U records that name no field, the model's title first.
    std::vector<std::string> titles;
    /// 1U records that name a field: DATE, TIME, USER, HOST, PGM, VERSION and the like. Blank ones
    /// are left out.
    std::map<std::string, std::string> fields;
    /// Material names by number, of the 1UMAT records.
    std::map<std::int64_t, std::string> materials;
};

} // namespace Frd

#endif
