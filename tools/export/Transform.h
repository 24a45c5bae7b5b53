#ifndef EXPORT_TRANSFORM_H
#define EXPORT_TRANSFORM_H

#include "moxread/Node.h"

#include <array>

namespace Export {

/// Takes what is given in a group's own coordinates to those of the model.
class Transform
{
public:
    /// A transform that leaves everything where it is.
    Transform();
    /// Scales along the axes, then turns by the angle (in radians), then shifts.
    explicit Transform(MoxRead::Group const& group);

    /// The transform that does first what `inner` does, then what this one does.
    Transform of(Transform const& inner) const;

    /// Values are not even rounded by a transform that changes nothing.
    bool isIdentity() const;

    /// Each of these functions changes the three values that it is given.
    void applyToPoint(float* values) const;
    void applyToVector(float* values) const;
    /// For angles about the axes, which are turned, but neither scaled nor shifted.
    void applyToAngles(float* values) const;

private:
    using Vector = std::array<double, 3>;
    using Matrix = std::array<Vector, 3>;

    static Matrix rotationBy(std::array<float, 4> const& axisAndAngle);
    static Matrix product(Matrix const& left, Matrix const& right);
    static Vector product(Matrix const& matrix, Vector const& vector);
    static void apply(Matrix const& matrix, Vector const& shift, float* values);

    Matrix linear_;
    Matrix rotation_;
    Vector translation_ = {};
};

} // namespace Export

#endif
