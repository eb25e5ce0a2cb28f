// ZKBBoxAlgo.h: carrying a 3D box through an affine transform or a camera
// matrix.
//
// Each routine transforms the eight corners of the input box and returns the
// box of the results; an empty input box gives an empty output box. The
// output is always rebuilt from scratch (its previous content is ignored).
//
// A stateless class of static functions, safe from several threads.
#pragma once

#include "ZKBBox.h"
#include "ZKExport.h"
#include "ZKMatrix.h"

class ZKUTILS_EXPORT ZKBBoxAlgo {
public:
    // The box of the eight corners carried by the affine transform m
    // ((3×3 part)·p + translation; the last row of m is not used).
    static void transformBBox(ZKBBox3f& out, const ZKBBox3f& in, const ZKMatrix4f& m);

    // The box of the eight corners projected as by ZKGeomMaths::cameraProjPoint
    // (projective transform; x and y negated when the projected z exceeds
    // limit). With skipBeyondLimit, corners whose projected z exceeds limit
    // (behind the camera) are left out; when all are, out is empty.
    static void cameraProjBBox(ZKBBox3f& out, const ZKBBox3f& in, const ZKMatrix4f& m, float limit,
                               bool skipBeyondLimit);
    // The same keeping x and y of every corner.
    static void cameraProjBBox(ZKBBox2f& out, const ZKBBox3f& in, const ZKMatrix4f& m, float limit);
};
