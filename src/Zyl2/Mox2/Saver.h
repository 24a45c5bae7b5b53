#ifndef ZYL2_MOX2_SAVER_H
#define ZYL2_MOX2_SAVER_H

#include <Zyl2/Mox2/SaverOptions.h>

#include "Zyl2/Base/Saver.h"
#include "Zyl2/Mox2/Database.h"

namespace Zyl2 {
namespace Mox2 {

/// Starts a model: makes the tree, creates the file and writes its header. Runs first, in spite of
/// its name; the file is finished by `Database::close`.
class Saver : public Base::Saver<Database, SaverOptions>
{
public:
    using Base::Saver<Database, SaverOptions>::Saver;
    using Base::Saver<Database, SaverOptions>::extractFrom;

    /// \throws InvalidObjectState "Not Empty"
    /// \throws InvalidArguments the options or the environment ask for an encoder, threads or
    /// blocks
    ///         that there are not; nothing is changed
    /// \throws FileOpenException "File exists."
    /// \throws MiscelleneousException the file can't be opened
    virtual void extractFrom(Database& database);

private:
    bool hasFile() const;
    std::string path() const;
    bool openFile(Zyl2Mox::Tree& tree) const;
};

} // namespace Mox2
} // namespace Zyl2

#endif
