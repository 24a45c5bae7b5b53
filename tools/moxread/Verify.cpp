#include "moxread/Verify.h"

#include "moxread/FormatError.h"
#include "moxread/Model.h"
#include "moxread/PartitionIndex.h"
#include "moxread/PartitionTree.h"
#include "moxread/Text.h"

namespace MoxRead {

namespace {

void verifyModel(Model const& model, ProgressVisitor const& tell, Summary& summary)
{
    model.checkValues(tell);
    summary.blocks += model.blockCount();
    summary.nodes += model.nodes().size();
    summary.datasets += model.variableCount();
    summary.bytes += model.bytes();
}

// One file after the other, however many there are.
Summary verifyFiles(std::string const& path, ProgressVisitor const& tell,
                    ReadOptions const& options)
{
    PartitionIndex const index(path);
    index.requireFiles();
    Summary summary;
    std::uint64_t done = 0;
    for (PartitionFile const& file : index.files()) {
        inContext([&] { return quoted(file.name); },
                  [&] {
                      Model const model(file.path, options);
                      requireOwn(index, file, model.nodes());
                      verifyModel(model, {}, summary);
                  });
        if (tell)
            tell(++done, index.files().size());
    }
    if (!index.isComplete())
        throw FormatError::incomplete(
            "the program ended before it finished the index; each of its files is whole");
    return summary;
}

} // namespace

Summary verify(std::string const& path, ProgressVisitor const& tell, ReadOptions const& options)
{
    if (PartitionIndex::isIndex(path))
        return verifyFiles(path, tell, options);
    Summary summary;
    verifyModel(Model(path, options), tell, summary);
    return summary;
}

} // namespace MoxRead
