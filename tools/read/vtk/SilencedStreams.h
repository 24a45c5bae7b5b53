#ifndef READ_VTK_SILENCEDSTREAMS_H
#define READ_VTK_SILENCEDSTREAMS_H

namespace VtkRead {

/// While it lives, what anybody writes to the process's output and error streams goes nowhere: some
/// of the libraries behind VTK's readers print before they fail.
class SilencedStreams
{
public:
    SilencedStreams();
    ~SilencedStreams();
    SilencedStreams(SilencedStreams const&) = delete;
    SilencedStreams& operator=(SilencedStreams const&) = delete;

private:
    int output_;
    int error_;
};

} // namespace VtkRead

#endif
