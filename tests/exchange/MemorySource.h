#ifndef TESTS_EXCHANGE_MEMORYSOURCE_H
#define TESTS_EXCHANGE_MEMORYSOURCE_H

#include <exchange/Source.h>

#include <string>
#include <utility>
#include <vector>

namespace Exchange {

/// A result that a test puts together.
class MemorySource : public Source
{
public:
    struct Content
    {
        AttributeList attributes;
        std::vector<Part> parts;
        /// The steps and what each of them has.
        std::vector<std::pair<StepInfo, std::vector<Field>>> steps;
        std::string modelName = {};
    };

    explicit MemorySource(Content content) : content_(std::move(content)) {}

    std::string modelName() const override { return content_.modelName; }
    AttributeList attributes() const override { return content_.attributes; }
    std::vector<Part> readParts() override { return content_.parts; }
    std::size_t stepCount() const override { return content_.steps.size(); }
    StepInfo step(std::size_t index) const override { return content_.steps[index].first; }
    void readStep(std::size_t index, FieldVisitor const& visit) override
    {
        for (Field const& field : content_.steps[index].second)
            visit(field);
    }

private:
    Content content_;
};

/// Two triangles over four nodes in a plane.
inline Part twoTriangles(std::string const& name)
{
    ElementType const* const triangle = ElementType::find("Triangle");
    Part part;
    part.name = name;
    part.coordinates = {0, 0, 0, 1, 0, 0, 1, 1, 0, 0, 1, 0};
    part.types = {triangle, triangle};
    part.offsets = {0, 3, 6};
    part.connectivity = {0, 1, 2, 0, 2, 3};
    return part;
}

inline Field fieldOf(std::string const& name, Location location, std::size_t components,
                     decltype(Field::values) values)
{
    Field field;
    field.name = name;
    field.location = location;
    field.components = components;
    field.values = std::move(values);
    return field;
}

} // namespace Exchange

#endif
