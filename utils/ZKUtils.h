// ZKUtils.h: the umbrella header; includes every public header of the library.
// Use it as #include <ZKUtils/ZKUtils.h>.
#pragma once

// foundation
#include "ZKArrayDebugLog.h"
#include "ZKAssert.h"
#include "ZKAssert_Mac.h"
#include "ZKClassType.h"
#include "ZKCompatibleType.h"
#include "ZKDebugChrono.h"
#include "ZKExport.h"
#include "ZKLog.h"
#include "ZKLogWindow.h"
#include "ZKObject.h"
#include "ZKReturnCodes.h"
#include "ZKTyped.h"

// strings
#include "ZKStringC.h"
#include "ZKStringServer.h"
#include "ZKStringW.h"

// containers
#include "ZKArray.h"
#include "ZKArrayByBlocs.h"
#include "ZKArrayIO.h"
#include "ZKArrayServer.h"
#include "ZKBoolArray.h"
#include "ZKUBIndexQueue.h"
#include "ZKUIdGenerator.h"

// persistence
#include "ZKBinaryFile.h"
#include "ZKTokenValueFile.h"

// disk
#include "ZKDisk.h"
#include "ZKFileFinder.h"
#include "ZKFileSystemWatcher.h"

// system
#include "ZKDate.h"
#include "ZKDateTime.h"
#include "ZKKeyboardServer.h"
#include "ZKModifierFlags.h"
#include "ZKMouseServer.h"
#include "ZKMutex.h"
#include "ZKProcessServer.h"
#include "ZKRandomServer.h"
#include "ZKSystemServer.h"
#include "ZKThread.h"
#include "ZKTimeServer.h"

// maths
#include "ZKBBox.h"
#include "ZKBBoxAlgo.h"
#include "ZKBoundingSphere.h"
#include "ZKGeomMaths.h"
#include "ZKLine.h"
#include "ZKMatrix.h"
#include "ZKMatrixRoutines.h"
#include "ZKMatrixRoutines_Euler.h"
#include "ZKMatrixRoutines_Rotation.h"
#include "ZKNumeric.h"
#include "ZKPlane.h"
#include "ZKQuaternion.h"
#include "ZKQuaternionRoutines.h"
#include "ZKSegment.h"
#include "ZKSymMatrix3d.h"
#include "ZKVec.h"

// image
#include "ZKColor.h"
#include "ZKColorServer.h"
#include "ZKImage.h"
#include "ZKImageIO_Utils.h"
#include "ZKPixRect.h"
