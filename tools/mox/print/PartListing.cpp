#include "PartListing.h"

#include "JsonWriter.h"

#include "moxread/PartitionIndex.h"
#include "moxread/Text.h"

namespace Mox {

using MoxRead::PartitionFile;
using MoxRead::PartitionIndex;
using MoxRead::quoted;

namespace {

void printText(PartitionIndex const& index, std::ostream& out)
{
    out << "mox set 1: " << index.files().size() << (index.files().size() == 1 ? " file" : " files")
        << " of " << index.ranks() << (index.ranks() == 1 ? " rank" : " ranks")
        << (index.isComplete() ? "\n" : ", the index was not finished\n");
    for (PartitionFile const& file : index.files()) {
        std::string const complaint = index.complaintAbout(file);
        if (!complaint.empty())
            out << complaint << '\n';
        else
            out << quoted(file.name) << " of " << file.rankText() << ": ok\n";
    }
}

void printJson(PartitionIndex const& index, std::string const& path, std::ostream& out)
{
    JsonWriter json(out);
    json.beginObject().member("file", path).member("complete", index.isComplete());
    json.member("rankCount", index.ranks()).key("parts").beginArray();
    for (PartitionFile const& file : index.files()) {
        std::string const complaint = index.complaintAbout(file);
        json.beginObject(JsonWriter::OneLine).member("name", file.name).key("ranks").beginArray();
        for (auto const& [first, last] : file.ranks)
            json.beginArray(JsonWriter::OneLine).value(first).value(last).endArray();
        json.endArray().member("ok", complaint.empty());
        if (!complaint.empty())
            json.member("error", complaint);
        json.endObject();
    }
    json.endArray().endObject();
}

} // namespace

void listParts(std::string const& path, bool asJson, std::ostream& out)
{
    PartitionIndex const index(path);
    if (asJson)
        printJson(index, path, out);
    else
        printText(index, out);
}

} // namespace Mox
