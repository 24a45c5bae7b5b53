#include "StepFiles.h"

#include <algorithm>

namespace EnSight {

StepFiles::StepFiles(CaseFile const& description, CaseFile::Series const& series, bool isMesh)
    : case_(description), series_(series), isMesh_(isMesh)
{}

void StepFiles::read(std::size_t step, DataFile::Encoding& encoding, Read const& read)
{
    CaseFile::StepPlace const place = case_.placeOf(series_, step);
    DataFile file(place.path, encoding);
    if (place.path != path_) {
        path_ = place.path;
        if (isMesh_ && !file.isText())
            file.description();
        starts_ = {file.place()};
    }
    auto at =
        static_cast<std::size_t>(std::min<std::uint64_t>(place.stepInFile, starts_.size() - 1));
    file.goTo(starts_[at]);
    for (;; ++at) {
        file.beginStep();
        if (!file.isSeries() && place.stepInFile > 0 && series_.fileSet != nullptr)
            file.raise("does not begin with a step");
        read(file);
        encoding.order = file.encoding().order;
        if (!file.isSeries())
            return;
        if (at + 1 == starts_.size())
            starts_.push_back(file.place());
        if (at >= place.stepInFile)
            return;
    }
}

} // namespace EnSight
