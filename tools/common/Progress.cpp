#include "Progress.h"

#include <algorithm>
#include <utility>

#include <sys/ioctl.h>

namespace Common {

namespace {

constexpr std::chrono::seconds patience(1);
constexpr std::chrono::milliseconds pause(100);
constexpr std::size_t usualColumns = 80;
constexpr std::size_t barWidth = 30;
// Width of the blanks, brackets and "100 %" beside the bar.
constexpr std::size_t frameWidth = 9;
char const* const wiping = "\r\x1B[K";

// What is shown may be a file's name, which must not control the terminal.
std::string printable(std::string text)
{
    std::replace_if(
        text.begin(), text.end(),
        [](char character) {
            auto const byte = static_cast<unsigned char>(character);
            return byte < 0x20 || byte == 0x7F;
        },
        '?');
    return text;
}

unsigned percentOf(std::uint64_t done, std::uint64_t all)
{
    if (done >= all)
        return 100;
    return static_cast<unsigned>(static_cast<double>(done) / static_cast<double>(all) * 100);
}

std::string rightAligned(std::string const& text, std::size_t width)
{
    return std::string(width - std::min(width, text.size()), ' ') + text;
}

void draw(int descriptor, std::string const& text)
{
    // A terminal that is gone takes nothing; the work goes on.
    [[maybe_unused]] auto const written = ::write(descriptor, text.data(), text.size());
}

} // namespace

Progress::Progress(std::string what, int descriptor, Clock clock)
    : what_(printable(std::move(what))), descriptor_(descriptor), clock_(std::move(clock)),
      isTerminal_(::isatty(descriptor) == 1), next_(clock_() + patience)
{}

Progress::~Progress()
{
    wipe();
}

void Progress::show(std::uint64_t done, std::uint64_t all)
{
    if (!isTerminal_)
        return;
    Time const now = clock_();
    if (now < next_)
        return;
    next_ = now + pause;
    draw(descriptor_, wiping + line(percentOf(done, all)));
    isDrawn_ = true;
}

void Progress::wipe()
{
    if (isDrawn_)
        draw(descriptor_, wiping);
    isDrawn_ = false;
}

void Progress::wipeLeftOver(int descriptor)
{
    if (::isatty(descriptor) == 1)
        draw(descriptor, wiping);
}

std::size_t Progress::columns() const
{
    winsize size = {};
    bool const isKnown = ::ioctl(descriptor_, TIOCGWINSZ, &size) == 0 && size.ws_col > 0;
    return isKnown ? size.ws_col : usualColumns;
}

// Never as wide as the terminal: a line that wraps could not be wiped off.
std::string Progress::line(unsigned percent) const
{
    std::string end = rightAligned(std::to_string(percent), 3) + " %";
    std::size_t const room = columns();
    if (room <= barWidth + frameWidth + 1)
        return end;
    std::size_t const filled = barWidth * percent / 100;
    return what_.substr(0, room - barWidth - frameWidth - 1) + " [" + std::string(filled, '#') +
           std::string(barWidth - filled, ' ') + "] " + end;
}

} // namespace Common
