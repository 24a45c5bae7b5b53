#ifndef TESTS_SUPPORT_SOURCECONTENT_H
#define TESTS_SUPPORT_SOURCECONTENT_H

#include <exchange/Report.h>
#include <exchange/Translation.h>

#include <cstddef>
#include <filesystem>
#include <memory>
#include <stdexcept>
#include <string>
#include <variant>
#include <vector>

namespace Support {

/// A file as its source hands it over, all of it in memory.
struct SourceContent
{
    SourceContent(Exchange::SourceOpener const& open, std::filesystem::path const& path,
                  bool skipUnknown)
    {
        report.skipUnknown = skipUnknown;
        std::unique_ptr<Exchange::SequentialSource> const source = open(path, report);
        attributes = source->attributes();
        parts = source->readParts();
        source->readSteps(
            [this](Exchange::StepInfo const& step) {
                steps.push_back(step);
                fields.emplace_back();
            },
            [this](Exchange::Field const& field) { fields.back().push_back(field); });
    }

    /// Null when the part doesn't have it. Steps from 0.
    Exchange::Field const* find(std::size_t step, std::string const& name, std::size_t part) const
    {
        for (Exchange::Field const& field : fields.at(step))
            if (field.name == name && field.part == part)
                return &field;
        return nullptr;
    }

    template <typename Real = double>
    std::vector<Real> values(std::size_t step, std::string const& name, std::size_t part) const
    {
        Exchange::Field const* const field = find(step, name, part);
        if (field == nullptr)
            throw std::runtime_error("no field " + name);
        return std::get<std::vector<Real>>(field->values);
    }

    std::vector<std::string> partNames() const
    {
        std::vector<std::string> names;
        for (Exchange::Part const& part : parts)
            names.push_back(part.name);
        return names;
    }

    std::vector<std::string> warnings() const { return report.warnings(); }

    Exchange::Report report;
    Exchange::AttributeList attributes;
    std::vector<Exchange::Part> parts;
    std::vector<Exchange::StepInfo> steps;
    /// Of each step.
    std::vector<std::vector<Exchange::Field>> fields;
};

} // namespace Support

#endif
