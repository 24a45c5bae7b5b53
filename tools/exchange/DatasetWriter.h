#ifndef EXCHANGE_DATASETWRITER_H
#define EXCHANGE_DATASETWRITER_H

#include "Error.h"

#include <Zyl2/Mox2/Model.h>

#include <cstddef>
#include <cstdint>
#include <string>

namespace Exchange {

/// Adds datasets to a model without a copy between what fills them and the model's own.
class DatasetWriter
{
public:
    struct Target
    {
        std::string name;
        Zyl2::Mox2::DatasetType type;
        std::size_t rows;
        std::size_t width;
        /// Id of the shape.
        unsigned int shape;
    };

    explicit DatasetWriter(Zyl2::Mox2::Model& model) : model_(model) {}

    /// `fill` gets the place for rows x width values. Nothing happens when there are no rows.
    template <typename T, typename Fill>
    void add(Target const& target, Fill const& fill,
             Zyl2::Mox2::Step const& step = Zyl2::Mox2::Step(),
             Zyl2::Mox2::Attributes const& attributes = Zyl2::Mox2::Attributes())
    {
        if (target.rows == 0)
            return;
        checkSize(target);
        if (target.width == 1) {
            Zyl2::Mox2::Array1d<T> values(target.rows);
            fill(&values(0));
            model_.addArrayProperty(target.name, target.type, values, target.shape, step,
                                    attributes);
        } else {
            Zyl2::Mox2::Array2d<T> values(target.rows, target.width);
            fill(&values(0, 0));
            model_.addArrayProperty(target.name, target.type, values, target.shape, step,
                                    attributes);
        }
    }

private:
    static void checkSize(Target const& target);

    Zyl2::Mox2::Model& model_;
};

} // namespace Exchange

#endif
