#ifndef ZYL2_BASE_DATABASE_H
#define ZYL2_BASE_DATABASE_H

namespace Zyl2 {
namespace Base {

/// What commands run against.
class Database
{
public:
    Database() = default;
    Database(Database const&) = delete;
    Database& operator=(Database const&) = delete;
    virtual ~Database();

    /// Finishes and releases what the database holds; here, nothing.
    virtual void close();
};

} // namespace Base
} // namespace Zyl2

#endif
