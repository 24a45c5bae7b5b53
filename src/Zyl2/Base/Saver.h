#ifndef ZYL2_BASE_SAVER_H
#define ZYL2_BASE_SAVER_H

#include "Zyl2/Base/Database.h"
#include "Zyl2/Base/Extractor.h"
#include "Zyl2/Base/File.h"

namespace Zyl2 {
namespace Base {

/// Command that saves a database to a file.
template <typename DB, typename Options>
class Saver : public Extractor<DB, void>
{
public:
    Saver(File const& file, Options const& options) : file_(file), options_(options) {}

    using Extractor<DB, void>::extractFrom;
    virtual void extractFrom(Database const& /*database*/) const {}

protected:
    File const& getFile() const { return file_; }
    Options const& getOptions() const { return options_; }

private:
    File file_;
    Options options_;
};

} // namespace Base
} // namespace Zyl2

#endif
