#ifndef TESTS_EXODUS_OPENED_H
#define TESTS_EXODUS_OPENED_H

#include <exodus/Exodus.h>

#include <exchange/Field.h>
#include <exchange/Report.h>
#include <exchange/Source.h>

#include <filesystem>
#include <memory>
#include <stdexcept>
#include <string>
#include <variant>
#include <vector>

namespace ExodusTest {

/// A file as the source hands it over, all of it in memory.
class Opened
{
public:
    explicit Opened(std::filesystem::path const& path, bool skipUnknown = false)
    {
        report.skipUnknown = skipUnknown;
        source = Exodus::open(path, report);
        parts = source->readParts();
        for (std::size_t i = 0; i < source->stepCount(); ++i) {
            steps.push_back(source->step(i));
            fields.emplace_back();
            source->readStep(
                i, [this](Exchange::Field const& field) { fields.back().push_back(field); });
        }
    }

    /// Null when the part doesn't have it. Steps from 0.
    Exchange::Field const* find(std::size_t step, std::string const& name, std::size_t part) const
    {
        for (Exchange::Field const& field : fields.at(step))
            if (field.name == name && field.part == part)
                return &field;
        return nullptr;
    }

    template <typename Real>
    std::vector<Real> values(std::size_t step, std::string const& name, std::size_t part) const
    {
        Exchange::Field const* const field = find(step, name, part);
        if (field == nullptr)
            throw std::runtime_error("no field " + name);
        return std::get<std::vector<Real>>(field->values);
    }

    std::vector<std::string> warnings() const
    {
        std::vector<std::string> all;
        report.forEachWarning([&all](std::string const& warning) { all.push_back(warning); });
        return all;
    }

    Exchange::Report report;
    std::unique_ptr<Exchange::Source> source;
    std::vector<Exchange::Part> parts;
    std::vector<Exchange::StepInfo> steps;
    std::vector<std::vector<Exchange::Field>> fields;
};

} // namespace ExodusTest

#endif
