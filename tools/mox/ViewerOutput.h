#ifndef MOX_VIEWEROUTPUT_H
#define MOX_VIEWEROUTPUT_H

#include "SummaryText.h"

#include <functional>
#include <ostream>
#include <string>
#include <vector>

/// What a command for viewers makes, and how it tells of it.
class ViewerOutput
{
public:
    /// \param command with which lines on `err` begin: "mox view"
    /// \param path what is made
    ViewerOutput(std::string command, std::string path, bool asJson, std::ostream& out,
                 std::ostream& err);

    /// Has it made and says on `out` what came of it, as JSON if wanted. Each warning gets a line
    /// on `err`, and so does a failure. Returns the exit status. \param maker makes it and returns
    /// the summary
    template <typename Maker>
    int make(Maker const& maker) const
    {
        return run([&] {
            auto const summary = maker();
            tellWarnings(summary.warnings);
            if (asJson_)
                printJson(summary, path_, out_);
            else
                printText(summary, path_, out_);
        });
    }

private:
    int run(std::function<void()> const& action) const;
    void tellWarnings(std::vector<std::string> const& warnings) const;

    std::string command_;
    std::string path_;
    bool asJson_;
    std::ostream& out_;
    std::ostream& err_;
};

#endif
