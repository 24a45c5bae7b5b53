#ifndef TESTS_MOX_MODELFILE_H
#define TESTS_MOX_MODELFILE_H

#include "support/Folder.h"

#include <Zyl2/Mox2/Model.h>

#include <functional>
#include <string>

namespace MoxTest {

/// A model file that is on disk for as long as the object lives.
class ModelFile
{
public:
    using Program = std::function<void(Zyl2::Mox2::Model&)>;

    explicit ModelFile(Program const& program)
    {
        Zyl2::Mox2::Model model;
        model.saveTo(path());
        program(model);
        model.close();
    }

    std::string path() const { return folder_.path("model.mox").string(); }
    /// Of another file in the same folder.
    std::string path(std::string const& name) const { return folder_.path(name).string(); }
    Support::Folder const& folder() const { return folder_; }

private:
    Support::Folder folder_;
};

} // namespace MoxTest

#endif
