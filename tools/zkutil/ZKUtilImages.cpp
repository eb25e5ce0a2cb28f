// zkutil png, zkutil convert: the PNG and BMP readers and the PNG writer.
#include "ZKUtilCommon.h"

#include <ZKUtils/ZKUtils.h>

#include <QFileInfo>

#include <cstdio>

namespace zkutil {

namespace {

struct PackingName {
    const char* name;
    _ZKImagePacking packing;
};

const PackingName kPackingNames[] = {
    {"rgba", ZK_PACKING_RGBA},
    {"rgb", ZK_PACKING_RGB},
    {"bgra", ZK_PACKING_BGRA},
    {"bgr", ZK_PACKING_BGR},
    {"channel-1x8", ZK_PACKING_CHANNEL_1x8},
    {"channel-4x8", ZK_PACKING_CHANNEL_4x8},
    {"channel-2x8", ZK_PACKING_CHANNEL_2x8},
    {"grey", ZK_PACKING_GREY},
};

const char* packingName(_ZKImagePacking packing) {
    for (const PackingName& p : kPackingNames) {
        if (p.packing == packing)
            return p.name;
    }
    return "unknown";
}

bool isColour(_ZKImagePacking p) {
    return p == ZK_PACKING_RGBA || p == ZK_PACKING_RGB || p == ZK_PACKING_BGRA ||
           p == ZK_PACKING_BGR;
}

// The pairs the image converts; any other pair would leave the pixels undefined.
bool canConvert(_ZKImagePacking from, _ZKImagePacking to) {
    return from == to || (isColour(to) && (isColour(from) || from == ZK_PACKING_GREY));
}

bool loadAny(const QString& path, ZKImage& image) {
    const ZKStringW name(path);
    if (path.endsWith(QLatin1String(".bmp"), Qt::CaseInsensitive))
        return ZKImageIO_Utils::loadImage_BMP(name, image);
    return ZKImageIO_Utils::loadImage_PNG(name, image) ||
           ZKImageIO_Utils::loadImage_BMP(name, image);
}

} // namespace

int runPng(const QStringList& args) {
    if (args.size() != 1)
        return fail(QStringLiteral("png takes one FILE (see zkutil png --help)"));
    if (const int status = checkReadableFile(args[0]))
        return status;
    ZKImage image;
    if (!ZKImageIO_Utils::loadImage_PNG(ZKStringW(args[0]), image))
        return fail(QStringLiteral("%1: not a readable PNG file").arg(args[0]));
    std::printf("width\t%d\nheight\t%d\npacking\t%d (%s)\ndepth\t%d\n", image.getWidth(),
                image.getHeight(), int(image.getPacking()), packingName(image.getPacking()),
                image.getDepth());
    return kExitOk;
}

int runConvert(const QStringList& argsIn) {
    QStringList args = argsIn;
    bool flip = false;
    int rotate = 0; // 1 clockwise, -1 counter-clockwise
    bool hasPacking = false;
    _ZKImagePacking packing = ZK_PACKING_RGBA;
    QStringList files;
    for (int i = 0; i < args.size(); ++i) {
        const QString& a = args[i];
        if (a == QLatin1String("--flip")) {
            flip = true;
        } else if (a == QLatin1String("--rotate") || a == QLatin1String("--packing")) {
            if (i + 1 >= args.size())
                return fail(QStringLiteral("%1 needs a value (see zkutil convert --help)").arg(a));
            const QString value = args[++i];
            if (a == QLatin1String("--rotate")) {
                if (value == QLatin1String("cw"))
                    rotate = 1;
                else if (value == QLatin1String("ccw"))
                    rotate = -1;
                else
                    return fail(QStringLiteral("--rotate takes cw or ccw, not '%1'").arg(value));
            } else {
                hasPacking = false;
                for (const PackingName& p : kPackingNames) {
                    if (value == QLatin1String(p.name) &&
                        (isColour(p.packing) || p.packing == ZK_PACKING_GREY)) {
                        packing = p.packing;
                        hasPacking = true;
                    }
                }
                if (!hasPacking)
                    return fail(QStringLiteral("--packing takes rgba, rgb, bgra, bgr or grey, "
                                               "not '%1'")
                                    .arg(value));
            }
        } else if (a.startsWith(QLatin1String("--"))) {
            return fail(QStringLiteral("unknown option '%1' (see zkutil convert --help)").arg(a));
        } else {
            files << a;
        }
    }
    if (files.size() != 2)
        return fail(QStringLiteral("convert takes IN and OUT (see zkutil convert --help)"));
    if (const int status = checkReadableFile(files[0]))
        return status;
    ZKImage image;
    if (!loadAny(files[0], image))
        return fail(QStringLiteral("%1: not a readable PNG or BMP file").arg(files[0]));
    if (hasPacking) {
        if (!canConvert(image.getPacking(), packing))
            return fail(QStringLiteral("cannot convert %1 pixels to %2")
                            .arg(QLatin1String(packingName(image.getPacking())),
                                 QLatin1String(packingName(packing))));
        image.convertPacking(packing);
    }
    if (flip)
        image.mirrorVertically();
    if (rotate != 0)
        image.rotate90(rotate > 0);
    // The writer answers false whatever happened: the file is checked instead.
    QFile::remove(files[1]);
    ZKImageIO_Utils::saveImage_PNG(ZKStringW(files[1]), image);
    ZKImage written;
    if (!ZKImageIO_Utils::loadImage_PNG(ZKStringW(files[1]), written))
        return fail(QStringLiteral("%1: could not be written").arg(files[1]));
    std::printf("%s: %dx%d %s\n", local8(files[1]).constData(), written.getWidth(),
                written.getHeight(), packingName(written.getPacking()));
    return kExitOk;
}

} // namespace zkutil
