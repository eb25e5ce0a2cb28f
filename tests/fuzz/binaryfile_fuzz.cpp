// Fuzzes the ZKBinaryFile readers: the input chooses a sequence of read calls
// and holds the file they read.
//
// Input layout:
//   byte 0      settings: bit 0 clears sizeAs64Bits, bit 1 sets
//               boolArrayCountAs32Bits, bits 2-3 pick the wide-string mode
//               (0, 2, 1 or -1; the last two are the unsupported modes)
//   byte 1      n, the number of operation bytes
//   n bytes     the operations, one byte each (value % kOpCount); skipData
//               takes the next operation byte as its signed offset
//   the rest    the file's content
#include "ZKFuzzSupport.h"

#include "ZKBBox.h"
#include "ZKBinaryFile.h"
#include "ZKBoolArray.h"
#include "ZKColor.h"
#include "ZKMatrix.h"
#include "ZKObject.h"
#include "ZKPlane.h"
#include "ZKVec.h"

#include <cstddef>
#include <cstdint>

namespace {

enum Op : int {
    OpInt,
    OpUInt,
    OpInt16,
    OpInt8,
    OpUInt8,
    OpUInt64,
    OpIntBE,
    OpUIntBE,
    OpFloat,
    OpFloatBE,
    OpDouble,
    OpSize,
    OpBool,
    OpBools2,
    OpBools3,
    OpBools4,
    OpBools5,
    OpUId,
    OpVec2f,
    OpVec2i,
    OpVec3f,
    OpVec3d,
    OpColor3f,
    OpColor4f,
    OpColor3ub,
    OpColor4ub,
    OpMatrix4f,
    OpPlane,
    OpBBox3f,
    OpStringC,
    OpStringW,
    OpStringCArray,
    OpStringWArray,
    OpBoolArray,
    OpSkipBoolArray,
    OpSkipData,
    OpRewindStringC,
    OpRewindStringW,
    OpClassType,
    OpClassTypeAndCreateObj,
    OpBlocHeader,
    OpBlocHeaderCheckId,
    OpSkipBloc,
    OpEndReadBloc,
    OpBlocHeaderData,
    OpBlocHeaderCheckIdData,
    OpSkipBlocData,
    OpEndReadBlocData,
    OpToggleSizeAs64Bits,
    OpToggleBoolArrayCountAs32Bits,
    OpCycleStringWMode,
    kOpCount
};

const int kStringWModes[4] = {0, 2, 1, -1};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const uint8_t settings = size > 0 ? data[0] : 0;
    const size_t opCount = size > 1 ? data[1] : 0;
    const size_t opStart = size > 1 ? 2 : size;
    const size_t opEnd = opStart + opCount < size ? opStart + opCount : size;
    const uint8_t* ops = data + opStart;
    const size_t nbOps = opEnd - opStart;

    static const ZKFuzz::ScratchFile scratch("binaryfile");
    scratch.write(data + opEnd, size - opEnd);

    ZKBinaryFile file;
    ZKFuzz::check(file.open(scratch.pathW(), "rb"), "the scratch file opens");
    file.setSizeAs64Bits(!(settings & 1));
    file.setBoolArrayCountAs32Bits(settings & 2);
    int modeIndex = (settings >> 2) & 3;
    file.setStringWMode(kStringWModes[modeIndex]);

    ZKStringC lastC;
    ZKStringW lastW;
    ZKArray<ZKStringC> stringsC;
    ZKArray<ZKStringW> stringsW;
    ZKBoolArray bits;
    ZKBinFileBlocHeader header;
    ZKBinaryFile::ReadBlocData blocData;

    for (size_t i = 0; i < nbOps; ++i) {
        switch (ops[i] % kOpCount) {
        case OpInt: {
            int v;
            file.readInt(v);
            break;
        }
        case OpUInt: {
            unsigned int v;
            file.readUInt(v);
            break;
        }
        case OpInt16: {
            short v;
            file.readInt16(v);
            break;
        }
        case OpInt8: {
            signed char v;
            file.readInt8(v);
            break;
        }
        case OpUInt8: {
            unsigned char v;
            file.readUInt8(v);
            break;
        }
        case OpUInt64: {
            unsigned long long v;
            file.readUInt64(v);
            break;
        }
        case OpIntBE: {
            int v;
            file.readInt_BigEndian(v);
            break;
        }
        case OpUIntBE: {
            unsigned int v;
            file.readUInt_BigEndian(v);
            break;
        }
        case OpFloat: {
            float v;
            file.readFloat(v);
            break;
        }
        case OpFloatBE: {
            float v;
            file.readFloat_BigEndian(v);
            break;
        }
        case OpDouble: {
            double v;
            file.readDouble(v);
            break;
        }
        case OpSize: {
            unsigned long v;
            file.readSize(v);
            break;
        }
        case OpBool: {
            bool b;
            file.readBoolAsChar(b);
            break;
        }
        case OpBools2: {
            bool b[2];
            file.readBoolsAsChar(b[0], b[1]);
            break;
        }
        case OpBools3: {
            bool b[3];
            file.readBoolsAsChar(b[0], b[1], b[2]);
            break;
        }
        case OpBools4: {
            bool b[4];
            file.readBoolsAsChar(b[0], b[1], b[2], b[3]);
            break;
        }
        case OpBools5: {
            bool b[5];
            file.readBoolsAsChar(b[0], b[1], b[2], b[3], b[4]);
            break;
        }
        case OpUId:
            file.readUId(0);
            break;
        case OpVec2f: {
            ZKVec2f v;
            file.readVec2f(v);
            break;
        }
        case OpVec2i: {
            ZKVec2i v;
            file.readVec2i(v);
            break;
        }
        case OpVec3f: {
            ZKVec3f v;
            file.readVec3f(v);
            break;
        }
        case OpVec3d: {
            ZKVec3d v;
            file.readVec3d(v);
            break;
        }
        case OpColor3f: {
            ZKColor3f c;
            file.readColor3f(c);
            break;
        }
        case OpColor4f: {
            ZKColor4f c;
            file.readColor4f(c);
            break;
        }
        case OpColor3ub: {
            ZKColor3ub c;
            file.readColor3ub(c);
            break;
        }
        case OpColor4ub: {
            ZKColor4ub c;
            file.readColor4ub(c);
            break;
        }
        case OpMatrix4f: {
            ZKMatrix4f m;
            file.readMatrix4f(m);
            break;
        }
        case OpPlane: {
            ZKPlane3f p;
            file.readPlane(p);
            break;
        }
        case OpBBox3f: {
            ZKBBox3f b;
            file.readBBox3f(b);
            break;
        }
        case OpStringC:
            file.readStringC(lastC);
            break;
        case OpStringW:
            file.readStringW(lastW);
            break;
        case OpStringCArray:
            file.readStringCArray(stringsC);
            break;
        case OpStringWArray:
            file.readStringWArray(stringsW);
            break;
        case OpBoolArray:
            if (file.readBoolArray(bits))
                ZKFuzz::check(bits.size() <= (long long)size, "a bool array read fits the file");
            break;
        case OpSkipBoolArray:
            file.skipBoolArray();
            break;
        case OpSkipData: {
            const int offset = i + 1 < nbOps ? int(int8_t(ops[++i])) : 0;
            file.skipData(offset);
            break;
        }
        case OpRewindStringC:
            file.rewindReadStringC(lastC);
            break;
        case OpRewindStringW:
            file.rewindReadStringW(lastW);
            break;
        case OpClassType:
            file.readClassType(lastC);
            break;
        case OpClassTypeAndCreateObj:
            delete file.readClassTypeAndCreateObj(); // the caller owns what is made
            break;
        case OpBlocHeader:
            file.readBlocHeader(header);
            break;
        case OpBlocHeaderCheckId:
            file.readBlocHeader_CheckId(header, header.id);
            break;
        case OpSkipBloc:
            file.skipBloc(header);
            break;
        case OpEndReadBloc:
            file.endReadBloc(header);
            break;
        case OpBlocHeaderData:
            file.readBlocHeader(header, blocData);
            break;
        case OpBlocHeaderCheckIdData:
            file.readBlocHeader_CheckId(header, blocData, header.id);
            break;
        case OpSkipBlocData:
            file.skipBloc(header, blocData);
            break;
        case OpEndReadBlocData:
            file.endReadBloc(header, blocData);
            break;
        case OpToggleSizeAs64Bits:
            file.setSizeAs64Bits(!file.getSizeAs64Bits());
            break;
        case OpToggleBoolArrayCountAs32Bits:
            file.setBoolArrayCountAs32Bits(!file.getBoolArrayCountAs32Bits());
            break;
        case OpCycleStringWMode:
            modeIndex = (modeIndex + 1) & 3;
            file.setStringWMode(kStringWModes[modeIndex]);
            break;
        default:
            break;
        }
    }
    return 0;
}
