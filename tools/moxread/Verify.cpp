#include "moxread/Verify.h"

#include "moxread/Model.h"

namespace MoxRead {

Summary verify(std::string const& path, ProgressVisitor const& tell)
{
    Model const model(path);
    model.checkValues(tell);
    Summary summary;
    summary.blocks = model.container().blockCount();
    summary.nodes = model.nodes().size();
    summary.datasets = model.variableCount();
    summary.bytes = model.container().file().size();
    return summary;
}

} // namespace MoxRead
