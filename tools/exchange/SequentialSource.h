#ifndef EXCHANGE_SEQUENTIALSOURCE_H
#define EXCHANGE_SEQUENTIALSOURCE_H

#include "Attribute.h"
#include "Field.h"
#include "Part.h"
#include "StepInfo.h"

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace Exchange {

/// A result file of another format, open for reading from front to back.
///
/// All failures are `Exchange::Error`: one sentence that says what is wrong with the file, without
/// the file's name.
class SequentialSource
{
public:
    /// How much was read, of how much.
    struct Stage
    {
        std::uint64_t done;
        std::uint64_t all;
    };

    using StepVisitor = std::function<void(StepInfo const&)>;
    using FieldVisitor = std::function<void(Field const&)>;

    SequentialSource() = default;
    virtual ~SequentialSource() = default;
    SequentialSource(SequentialSource const&) = delete;
    SequentialSource& operator=(SequentialSource const&) = delete;

    /// What the source calls the model; empty when the file's name has to serve.
    virtual std::string modelName() const { return {}; }

    /// Attributes of the model's root: titles, who wrote the file, and the like.
    virtual AttributeList attributes() const = 0;

    /// Nodes and elements. Reads them when asked; the writer asks once and releases them part by
    /// part.
    virtual std::vector<Part> readParts() = 0;

    /// Hands over each step and, behind it, its fields, one after the other; no two fields are in
    /// memory at a time, where the format allows. Called once, after the parts were read.
    virtual void readSteps(StepVisitor const& startStep, FieldVisitor const& addField) = 0;

    /// Makes a file that ends too early, as that of a run which was stopped, yield the steps that
    /// are whole instead of an error; the root's attribute `Incomplete` then says why. False when
    /// the format's files are whole or can't be read. Called before everything else, if at all.
    virtual bool keepWholeSteps() { return false; }

    /// How far reading has come, in whatever the source counts.
    virtual Stage stage() const = 0;
};

} // namespace Exchange

#endif
