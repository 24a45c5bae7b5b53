#ifndef MOX_COMMANDS_VIEWEROUTPUT_H
#define MOX_COMMANDS_VIEWEROUTPUT_H

#include "common/Progress.h"
#include "mox/print/SummaryText.h"

#include <cstddef>
#include <functional>
#include <ostream>
#include <string>
#include <vector>

namespace Mox {

/// What a command for viewers makes, and how it tells of it.
class ViewerOutput
{
public:
    /// \param command as the user calls it: "view"
    /// \param path what is made
    ViewerOutput(std::string command, std::string path, bool asJson, std::ostream& out,
                 std::ostream& err);

    /// Has it made of a model and says on `out` what came of it, as JSON if wanted. Each warning
    /// gets a line on `err`, and so does a failure. Returns the exit status.
    /// \param maker takes the model's file, the path and the options, and returns the summary
    template <typename Options, typename Maker>
    int make(std::string const& model, Options const& options, Maker const& maker) const
    {
        return run([&] {
            auto const summary = makeWithProgress(model, options, maker);
            tellWarnings(summary.warnings);
            if (asJson_)
                printJson(summary, path_, out_);
            else
                printText(summary, path_, out_);
        });
    }

private:
    /// The bar is gone when this returns, before anything else is said.
    template <typename Options, typename Maker>
    auto makeWithProgress(std::string const& model, Options options, Maker const& maker) const
    {
        Common::Progress progress(command_ + " " + model);
        options.progress = [&progress](std::size_t done, std::size_t all) {
            progress.show(done, all);
        };
        return maker(model, path_, options);
    }

    int run(std::function<void()> const& action) const;
    void tellWarnings(std::vector<std::string> const& warnings) const;

    std::string command_;
    std::string path_;
    bool asJson_;
    std::ostream& out_;
    std::ostream& err_;
};

} // namespace Mox

#endif
