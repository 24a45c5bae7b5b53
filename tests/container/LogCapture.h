#ifndef TESTS_CONTAINER_LOGCAPTURE_H
#define TESTS_CONTAINER_LOGCAPTURE_H

#include <Zyl2/Log/Logging.h>

#include <ctime>
#include <string>
#include <vector>

namespace Support {

/// Keeps every record of the library for as long as it lives.
class LogCapture : public Zyl2::Log::LogSystem
{
public:
    struct Entry
    {
        std::string text;
        std::string file;
        std::string function;
        unsigned long line;
        int severity;
        std::time_t time;
    };

    LogCapture() : previous_(Zyl2::Log::setActiveLogSystem(this)) {}
    LogCapture(LogCapture const&) = delete;
    LogCapture& operator=(LogCapture const&) = delete;
    ~LogCapture() override { Zyl2::Log::setActiveLogSystem(previous_); }

    void operator+=(std::ostream const& text) override
    {
        auto const& record = dynamic_cast<Zyl2::Log::Record<char> const&>(text);
        entries.push_back({record.str(), record.file, record.function, record.line,
                           static_cast<int>(record.severity), record.time});
    }

    void operator+=(Zyl2::Log::Record<char> const& /*record*/) override { ++recordCalls; }

    std::vector<std::string> Texts() const
    {
        std::vector<std::string> texts;
        for (Entry const& entry : entries)
            texts.push_back(entry.text);
        return texts;
    }

    std::vector<Entry> entries;
    /// The library hands its records over as plain streams, so nothing arrives the other way.
    int recordCalls = 0;

private:
    Zyl2::Log::LogSystem* previous_;
};

} // namespace Support

#endif
