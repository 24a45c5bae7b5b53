#include "Inputs.h"

#include "AllocationMeter.h"
#include "Violation.h"

#include "container/TemporaryFile.h"
#include "exchange/Error.h"
#include "exchange/Translation.h"
#include "moxread/Verify.h"
#include "read/ensight/Source.h"

#include <algorithm>
#include <cctype>
#include <cstdio>
#include <new>
#include <string>
#include <variant>
#include <vector>

namespace Fuzz {

namespace {

/// The files of a case, for as long as this lives.
class CaseFiles
{
public:
    explicit CaseFiles(std::string const& bytes)
    {
        static std::string const mark = "\n@@@@";
        constexpr std::size_t longestName = 16;
        std::string name = "in.case";
        for (std::size_t first = 0; first <= bytes.size();) {
            std::size_t const end = std::min(bytes.find(mark, first), bytes.size());
            bool const isName = !name.empty() && name.size() <= longestName &&
                                (files_.empty() || std::all_of(name.begin(), name.end(), isPlain));
            if (isName) {
                files_.push_back(folder().File(name));
                Support::WriteFile(files_.back(), bytes.substr(first, end - first));
            }
            std::size_t const line = std::min(end + mark.size(), bytes.size());
            first = std::min(bytes.find('\n', line), bytes.size()) + 1;
            name = bytes.substr(line, first - 1 - line);
        }
    }

    ~CaseFiles()
    {
        for (std::string const& file : files_)
            std::remove(file.c_str());
    }

    CaseFiles(CaseFiles const&) = delete;
    CaseFiles& operator=(CaseFiles const&) = delete;

    std::string const& path() const { return files_.front(); }

    static Support::TemporaryFolder const& folder()
    {
        static Support::TemporaryFolder const folder;
        return folder;
    }

private:
    static bool isPlain(unsigned char letter) { return std::isalnum(letter) != 0; }

    std::vector<std::string> files_;
};

std::size_t valueCount(Exchange::Field const& field)
{
    return std::visit([](auto const& values) { return values.size(); }, field.values);
}

void readAll(std::string const& path)
{
    Exchange::Report report;
    report.skipUnknown = true;
    auto const source = EnSight::open(path, report);
    std::vector<std::size_t> nodes;
    std::vector<std::size_t> elements;
    for (Exchange::Part const& part : source->readParts()) {
        nodes.push_back(part.nodeCount());
        elements.push_back(part.elementCount());
    }
    source->readSteps([](Exchange::StepInfo const& /*step*/) {},
                      [&](Exchange::Field const& field) {
                          bool const isOnNodes = field.location == Exchange::Location::Nodes;
                          require(valueCount(field) ==
                                      (isOnNodes ? nodes : elements).at(field.part) *
                                          field.components,
                                  "a field does not fit its part");
                      });
}

/// \return whether the reader accepts the case
bool canBeReadWithin(std::size_t bound, std::string const& path, bool mayBeLarge)
{
    try {
        AllocationMeter const meter(bound);
        readAll(path);
        return true;
    } catch (Exchange::Error const& error) {
        std::string const message = error.what();
        require(!message.empty() && message.find('\n') == std::string::npos,
                "a complaint is not one line");
    } catch (std::bad_alloc const&) {
        require(mayBeLarge, "more memory was used than the files account for");
    }
    return false;
}

void requireSoundTranslationOfCase(std::string const& path)
{
    std::string const model = CaseFiles::folder().File("model.mox");
    Exchange::TranslationOptions options;
    options.overwrite = true;
    Exchange::Report report;
    report.skipUnknown = true;
    Exchange::translate(path, EnSight::open, model, options, report);
    MoxRead::verify(model);
    std::remove(model.c_str());
}

} // namespace

void readEnSightCase(std::uint8_t const* bytes, std::size_t size)
{
    std::string const text(reinterpret_cast<char const*>(bytes), size);
    CaseFiles const files(text);
    bool const mayBeLarge =
        text.find("uniform") != std::string::npos || text.find("rectilinear") != std::string::npos;
    constexpr std::size_t fixedMemory = std::size_t{256} << 10U;
    constexpr std::size_t memoryPerByte = 64;
    if (canBeReadWithin(fixedMemory + memoryPerByte * size, files.path(), mayBeLarge))
        requireSoundTranslationOfCase(files.path());
}

} // namespace Fuzz
