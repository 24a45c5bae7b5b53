#ifndef TESTS_VTKREAD_OPENEDFILE_H
#define TESTS_VTKREAD_OPENEDFILE_H

#include <exchange/Error.h>
#include <vtkread/Source.h>

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

/// A file that is open, and all that it hands over.
class OpenedFile
{
public:
    explicit OpenedFile(VtkRead::FileKind kind, std::filesystem::path const& path,
                        bool skipUnknown = false)
    {
        report_.skipUnknown = skipUnknown;
        source_ = VtkRead::open(kind, path, report_);
        parts_ = source_->readParts();
        for (std::size_t i = 0; i < source_->stepCount(); ++i) {
            steps_.push_back(source_->step(i));
            fields_.emplace_back();
            source_->readStep(
                i, [this](Exchange::Field const& field) { fields_.back().push_back(field); });
        }
    }

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

    Exchange::Source const& source() const { return *source_; }
    std::vector<Exchange::Part> const& parts() const { return parts_; }
    std::vector<Exchange::StepInfo> const& steps() const { return steps_; }
    std::vector<Exchange::Field> const& fields(std::size_t step = 0) const { return fields_[step]; }

    Exchange::Field const& field(std::string const& name, std::size_t step = 0,
                                 std::size_t part = 0) const
    {
        for (Exchange::Field const& field : fields_[step])
            if (field.name == name && field.part == part)
                return field;
        throw std::runtime_error("no field " + name);
    }

    std::vector<std::string> fieldNames(std::size_t step = 0) const
    {
        std::vector<std::string> names;
        for (Exchange::Field const& field : fields_[step])
            names.push_back(field.name);
        return names;
    }

    std::vector<std::string> warnings() const
    {
        std::vector<std::string> sentences;
        report_.forEachWarning([&](std::string const& text) { sentences.push_back(text); });
        return sentences;
    }

private:
    Exchange::Report report_;
    std::unique_ptr<Exchange::Source> source_;
    std::vector<Exchange::Part> parts_;
    std::vector<Exchange::StepInfo> steps_;
    std::vector<std::vector<Exchange::Field>> fields_;
};

#endif
