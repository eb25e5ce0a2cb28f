#include "ZKQuaternion.h"

#include "internal/ZKRotationKernels.h"

namespace {

// Axis from × to and the angle between the vectors (in double), handed to
// the unit axis-angle constructor.
template <typename Q, typename V> void setFromTo(Q& q, const V& from, const V& to) {
    using T = typename Q::value_type;
    const double angle = ZKRotationKernels::angleBetween(from, to);
    // kept: opposite vectors have a vanishing axis (shorter than 1e-7) and
    // give the identity, not a half turn
    q.setFromAxisAngle(from.cross(to), T(angle));
}

} // namespace

ZKQuaternion::ZKQuaternion(const ZKVec3f& from, const ZKVec3f& to) {
    setFromTo(*this, from, to);
}

ZKQuaternionD::ZKQuaternionD(const ZKVec3d& from, const ZKVec3d& to) {
    setFromTo(*this, from, to);
}
