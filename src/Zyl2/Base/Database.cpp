#include "Zyl2/Base/Database.h"

namespace Zyl2 {
namespace Base {

Database::~Database() = default;

void Database::close() {}

} // namespace Base
} // namespace Zyl2
