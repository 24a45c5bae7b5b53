#include <Zyl2/Mox2/ArrayPieces.h>

namespace Zyl2 {
namespace Mox2 {

ArrayPieces::~ArrayPieces() = default;

} // namespace Mox2
} // namespace Zyl2
