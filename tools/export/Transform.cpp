#include "Transform.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace Export {

namespace {

constexpr std::array<std::array<double, 3>, 3> unit = {{{1, 0, 0}, {0, 1, 0}, {0, 0, 1}}};

} // namespace

Transform::Transform() : linear_(unit), rotation_(unit) {}

Transform::Transform(MoxRead::Group const& group)
    : linear_(unit), rotation_(rotationBy(group.rotation))
{
    std::copy(group.translation.begin(), group.translation.end(), translation_.begin());
    Matrix scale = unit;
    for (std::size_t i = 0; i < 3; ++i)
        scale[i][i] = group.scale[i];
    linear_ = product(rotation_, scale);
}

Transform Transform::of(Transform const& inner) const
{
    Transform result;
    result.linear_ = product(linear_, inner.linear_);
    result.rotation_ = product(rotation_, inner.rotation_);
    result.translation_ = product(linear_, inner.translation_);
    for (std::size_t i = 0; i < 3; ++i)
        result.translation_[i] += translation_[i];
    return result;
}

bool Transform::isIdentity() const
{
    return linear_ == unit && translation_ == Vector{};
}

void Transform::applyToPoint(float* values) const
{
    apply(linear_, translation_, values);
}

void Transform::applyToVector(float* values) const
{
    apply(linear_, Vector{}, values);
}

void Transform::applyToAngles(float* values) const
{
    apply(rotation_, Vector{}, values);
}

// Rodrigues' formula. Without an axis there is nothing to turn about.
Transform::Matrix Transform::rotationBy(std::array<float, 4> const& axisAndAngle)
{
    Vector axis = {axisAndAngle[0], axisAndAngle[1], axisAndAngle[2]};
    double const angle = axisAndAngle[3];
    double const length = std::hypot(axis[0], axis[1], axis[2]);
    if (length == 0 || angle == 0)
        return unit;
    for (double& value : axis)
        value /= length;
    Matrix const cross = {{{0, -axis[2], axis[1]}, {axis[2], 0, -axis[0]}, {-axis[1], axis[0], 0}}};
    Matrix const crossTwice = product(cross, cross);
    Matrix result = unit;
    for (std::size_t row = 0; row < 3; ++row)
        for (std::size_t column = 0; column < 3; ++column)
            result[row][column] += std::sin(angle) * cross[row][column] +
                                   (1 - std::cos(angle)) * crossTwice[row][column];
    return result;
}

Transform::Matrix Transform::product(Matrix const& left, Matrix const& right)
{
    Matrix result = {};
    for (std::size_t row = 0; row < 3; ++row)
        for (std::size_t column = 0; column < 3; ++column)
            for (std::size_t i = 0; i < 3; ++i)
                result[row][column] += left[row][i] * right[i][column];
    return result;
}

Transform::Vector Transform::product(Matrix const& matrix, Vector const& vector)
{
    Vector result = {};
    for (std::size_t row = 0; row < 3; ++row)
        for (std::size_t i = 0; i < 3; ++i)
            result[row] += matrix[row][i] * vector[i];
    return result;
}

void Transform::apply(Matrix const& matrix, Vector const& shift, float* values)
{
    Vector const moved = product(matrix, Vector{values[0], values[1], values[2]});
    for (std::size_t i = 0; i < 3; ++i)
        values[i] = static_cast<float>(moved[i] + shift[i]);
}

} // namespace Export
