#ifndef TESTS_READ_VTK_OPENEDFILE_H
#define TESTS_READ_VTK_OPENEDFILE_H

#include "support/SourceContent.h"

#include <exchange/Error.h>
#include <read/vtk/Source.h>

#include <filesystem>
#include <stdexcept>
#include <string>
#include <vector>

struct OpenedFile : Support::SourceContent
{
    OpenedFile(VtkRead::FileKind kind, std::filesystem::path const& path, bool skipUnknown = false)
        : SourceContent(openerOf(kind), path, skipUnknown)
    {}

    /// What is said of a file that can't be read; empty when it can.
    static std::string complaint(VtkRead::FileKind kind, std::filesystem::path const& path)
    {
        try {
            OpenedFile const file(kind, path);
        } catch (Exchange::Error const& error) {
            return error.what();
        }
        return {};
    }

    Exchange::Field const& field(std::string const& name, std::size_t step = 0,
                                 std::size_t part = 0) const
    {
        Exchange::Field const* const found = find(step, name, part);
        if (found == nullptr)
            throw std::runtime_error("no field " + name);
        return *found;
    }

    std::vector<std::string> fieldNames(std::size_t step = 0) const
    {
        std::vector<std::string> names;
        for (Exchange::Field const& field : fields.at(step))
            names.push_back(field.name);
        return names;
    }

private:
    static Exchange::SourceOpener openerOf(VtkRead::FileKind kind)
    {
        return [kind](std::filesystem::path const& path, Exchange::Report& told) {
            return VtkRead::open(kind, path, told);
        };
    }
};

#endif
