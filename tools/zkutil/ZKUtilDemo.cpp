// zkutil demo: the library's typical request end to end, every value checked.
#include "ZKUtilCommon.h"

#include <ZKUtils/ZKUtils.h>

#include <QDir>
#include <QFileInfo>
#include <QTemporaryDir>

#include <cmath>
#include <cstdio>
#include <cstring>
#include <memory>
#include <vector>

namespace {

constexpr unsigned int fourCC(const char (&s)[5]) {
    return (unsigned(s[0]) << 24) | (unsigned(s[1]) << 16) | (unsigned(s[2]) << 8) | unsigned(s[3]);
}

constexpr unsigned int kDocumentBloc = fourCC("ZKDC");
constexpr unsigned int kHeaderBloc = fourCC("HEAD");
constexpr unsigned int kObjectsBloc = fourCC("OBJS");
constexpr unsigned int kGeometryBloc = fourCC("GEOM");
constexpr unsigned int kSelectionBloc = fourCC("SELN");

// The document's polymorphic members, re-created by class name on reading.
class DemoShape : public ZKObject {
    ZK_DECLARE_CLASS(DemoShape)
public:
    virtual bool save(ZKBinaryFile& f) const {
        return f.writeInt(m_corners) && f.writeStringC(m_name);
    }
    virtual bool load(ZKBinaryFile& f) { return f.readInt(m_corners) && f.readStringC(m_name); }
    virtual bool sameAs(const DemoShape& o) const {
        return o.getClassType() == getClassType() && m_corners == o.m_corners && m_name == o.m_name;
    }
    int m_corners = 0;
    ZKStringC m_name;
};
ZK_IMPLEMENT_CLASS(DemoShape)

class DemoLight : public DemoShape {
    ZK_DECLARE_CLASS(DemoLight)
public:
    bool save(ZKBinaryFile& f) const override {
        return DemoShape::save(f) && f.writeColor4f(m_colour) && f.writeVec3f(m_position);
    }
    bool load(ZKBinaryFile& f) override {
        return DemoShape::load(f) && f.readColor4f(m_colour) && f.readVec3f(m_position);
    }
    bool sameAs(const DemoShape& o) const override {
        const auto* light = dynamic_cast<const DemoLight*>(&o);
        return light && DemoShape::sameAs(o) && light->m_colour.r == m_colour.r &&
               light->m_colour.a == m_colour.a && light->m_position == m_position;
    }
    ZKColor4f m_colour;
    ZKVec3f m_position;
};
ZK_IMPLEMENT_CLASS(DemoLight)

struct DemoDocument {
    ZKStringC title;
    ZKStringW author;  // written in UTF-8 (mode 0)
    ZKStringW comment; // written as UTF-16 units (mode 2)
    ZKArray<ZKStringC> tags;
    ZKArray<ZKStringW> layers;
    std::vector<std::unique_ptr<DemoShape>> objects;
    ZKMatrix4f transform;
    ZKMatrix4d camera;
    ZKVec3f pivot;
    ZKVec3d origin;
    ZKVec2i gridSize;
    ZKColor3ub background;
    ZKColor4ub highlight;
    ZKColor3f ambient;
    ZKBoolArray selection;
};

DemoDocument makeDocument() {
    DemoDocument d;
    d.title = "Teapot scene";
    d.author = ZKStringW(QString::fromUtf8("Ren\xc3\xa9 \xe2\x82\xac"));
    d.comment =
        ZKStringW(QString::fromUtf8("\xe6\x97\xa5\xe6\x9c\xac \xf0\x9f\x98\x80 \xc3\xa9t\xc3\xa9"));
    d.tags = ZKArray<ZKStringC>{"demo", "", "teapot"};
    d.layers =
        ZKArray<ZKStringW>{ZKStringW("Background"), ZKStringW(QString::fromUtf8("\xc3\x89"
                                                                                "clairage"))};
    auto shape = std::make_unique<DemoShape>();
    shape->m_corners = 4;
    shape->m_name = "floor";
    auto light = std::make_unique<DemoLight>();
    light->m_corners = 0;
    light->m_name = "key light";
    light->m_colour = ZKColor4f(1.0f, 0.9f, 0.7f, 1.0f);
    light->m_position = ZKVec3f(2.5f, 4.0f, -1.0f);
    d.objects.push_back(std::move(shape));
    d.objects.push_back(std::move(light));
    for (int i = 0; i < 16; ++i) {
        d.transform.m[i] = float(i) * 0.25f - 1.0f;
        d.camera.m[i] = std::sqrt(double(i) + 0.5);
    }
    d.pivot = ZKVec3f(0.5f, -0.25f, 8.0f);
    d.origin = ZKVec3d(1e-9, 123456.789, -2.0);
    d.gridSize = ZKVec2i(640, -480);
    d.background = ZKColor3ub(12, 34, 56);
    d.highlight = ZKColor4ub(255, 128, 0, 200);
    d.ambient = ZKColor3f(0.1f, 0.2f, 0.3f);
    d.selection.resize(1000, false);
    for (long long i = 0; i < 1000; i += 7)
        d.selection.set(i, 1);
    return d;
}

bool saveDocument(const DemoDocument& d, const ZKStringW& path) {
    ZKBinaryFile f(path, "wb");
    if (!f.isOpen())
        return false;
    bool ok = f.writeBlocHeader({kDocumentBloc, 0});

    ok = f.writeBlocHeader({kHeaderBloc, 0}) && ok;
    ok = f.writeStringC(d.title) && ok;
    ok = f.writeStringW(d.author) && ok;
    f.setStringWMode(ZKBinaryFile::StringWMode_Utf16);
    ok = f.writeStringW(d.comment) && ok;
    ok = f.writeStringWArray(d.layers) && ok;
    f.setStringWMode(ZKBinaryFile::StringWMode_Utf8);
    ok = f.writeStringCArray(d.tags) && ok;
    f.endWriteBloc(true);

    ok = f.writeBlocHeader({kObjectsBloc, 0}) && ok;
    ok = f.writeInt(int(d.objects.size())) && ok;
    for (const auto& object : d.objects) {
        f.writeClassType(object.get());
        ok = object->save(f) && ok;
    }
    f.endWriteBloc(true);

    ok = f.writeBlocHeader({kGeometryBloc, 0}) && ok;
    ok = f.writeMatrix4f(d.transform) && ok;
    for (double v : d.camera.m)
        ok = f.writeDouble(v) && ok;
    ok = f.writeVec3f(d.pivot) && f.writeVec3d(d.origin) && f.writeVec2i(d.gridSize) && ok;
    ok = f.writeColor3ub(d.background) && f.writeColor4ub(d.highlight) && ok;
    ok = f.writeColor3f(d.ambient) && ok;
    f.endWriteBloc(true);

    ok = f.writeBlocHeader({kSelectionBloc, 0}) && ok;
    ok = f.writeBoolArray(d.selection) && ok;
    f.endWriteBloc(true);

    f.endWriteBloc(true);
    return ok;
}

template <typename T> bool sameBytes(const T& a, const T& b) {
    return std::memcmp(&a, &b, sizeof(T)) == 0;
}

// Reads the document back and compares every value; `problem` names the first
// difference.
bool verifyDocument(const DemoDocument& d, const ZKStringW& path, QString& problem) {
    ZKBinaryFile f(path, "rb");
    if (!f.isOpen()) {
        problem = QStringLiteral("the document cannot be reopened");
        return false;
    }
    auto check = [&problem](bool ok, const char* what) {
        if (!ok && problem.isEmpty())
            problem = QString::fromLatin1(what);
        return ok;
    };
    ZKBinFileBlocHeader doc, h;
    ZKBinaryFile::ReadBlocData docData, data;
    bool ok = check(f.readBlocHeader_CheckId(doc, docData, kDocumentBloc), "document bloc");

    ok = check(f.readBlocHeader_CheckId(h, data, kHeaderBloc), "header bloc") && ok;
    ZKStringC title;
    ZKStringW author, comment;
    ZKArray<ZKStringC> tags;
    ZKArray<ZKStringW> layers;
    ok = check(f.readStringC(title) && title == d.title, "title") && ok;
    ok = check(f.readStringW(author) && author == d.author, "author (UTF-8)") && ok;
    f.setStringWMode(ZKBinaryFile::StringWMode_Utf16);
    ok = check(f.readStringW(comment) && comment == d.comment, "comment (UTF-16)") && ok;
    ok = check(f.readStringWArray(layers) && layers == d.layers, "layers") && ok;
    f.setStringWMode(ZKBinaryFile::StringWMode_Utf8);
    ok = check(f.readStringCArray(tags) && tags == d.tags, "tags") && ok;
    ok = check(f.endReadBloc(h, data), "header bloc size") && ok;

    ok = check(f.readBlocHeader_CheckId(h, data, kObjectsBloc), "objects bloc") && ok;
    int count = 0;
    ok = check(f.readInt(count) && count == int(d.objects.size()), "object count") && ok;
    for (int i = 0; ok && i < count; ++i) {
        std::unique_ptr<ZKObject> made(f.readClassTypeAndCreateObj());
        auto* shape = dynamic_cast<DemoShape*>(made.get());
        ok = check(shape != nullptr, "object re-created by class name") && ok;
        ok = ok && check(shape->load(f) && shape->sameAs(*d.objects[size_t(i)]), "object fields");
    }
    ok = check(f.endReadBloc(h, data), "objects bloc size") && ok;

    ok = check(f.readBlocHeader_CheckId(h, data, kGeometryBloc), "geometry bloc") && ok;
    ZKMatrix4f transform;
    ZKMatrix4d camera;
    ZKVec3f pivot;
    ZKVec3d origin;
    ZKVec2i grid;
    ZKColor3ub background;
    ZKColor4ub highlight;
    ZKColor3f ambient;
    ok = check(f.readMatrix4f(transform) && sameBytes(transform, d.transform), "matrix 4f") && ok;
    bool cameraOk = true;
    for (double& v : camera.m)
        cameraOk = f.readDouble(v) && cameraOk;
    ok = check(cameraOk && sameBytes(camera, d.camera), "matrix 4d") && ok;
    ok = check(f.readVec3f(pivot) && pivot == d.pivot, "vec3f") && ok;
    ok = check(f.readVec3d(origin) && origin == d.origin, "vec3d") && ok;
    ok = check(f.readVec2i(grid) && grid == d.gridSize, "vec2i") && ok;
    ok = check(f.readColor3ub(background) && sameBytes(background, d.background), "colour 3ub") &&
         ok;
    ok = check(f.readColor4ub(highlight) && sameBytes(highlight, d.highlight), "colour 4ub") && ok;
    ok = check(f.readColor3f(ambient) && sameBytes(ambient, d.ambient), "colour 3f") && ok;
    ok = check(f.endReadBloc(h, data), "geometry bloc size") && ok;

    ok = check(f.readBlocHeader_CheckId(h, data, kSelectionBloc), "selection bloc") && ok;
    ZKBoolArray selection;
    ok = check(f.readBoolArray(selection) && selection.size() == d.selection.size() &&
                   selection.countBitSet() == d.selection.countBitSet() &&
                   selection.findFirst(true, 1) == 7,
               "bool array") &&
         ok;
    ok = check(f.endReadBloc(h, data), "selection bloc size") && ok;
    ok = check(f.endReadBloc(doc, docData), "document bloc size") && ok;
    return ok;
}

bool writeAndReadSettings(const ZKStringW& path, const ZKStringW& documentPath, QString& problem) {
    ZKTokenValueFile out;
    if (!out.open(path, "w")) {
        problem = QStringLiteral("the settings file cannot be created");
        return false;
    }
    out.writeStringW(ZKStringC("document"), documentPath);
    out.writeInt("objects", 2);
    out.writeDouble("zoom", 1.25);
    out.writeFloat("gamma", 2.2f);
    out.writeBool("showGrid", true);
    out.writeBool("snap", false);
    out.writeStringW(ZKStringC("title"), ZKStringW(QString::fromUtf8("Th\xc3\xa9i\xc3\xa8re = 1")));
    out.close();

    ZKTokenValueFile in;
    if (!in.bufferedParseFile(path)) {
        problem = QStringLiteral("the settings file cannot be read back");
        return false;
    }
    ZKStringW document, title;
    int objects = 0;
    double zoom = 0;
    float gamma = 0;
    bool grid = false, snap = true;
    const bool ok = in.getCount() == 7 && in.getStringW("document", document) &&
                    document == documentPath && in.getInt("objects", objects) && objects == 2 &&
                    in.getDouble("zoom", zoom) && zoom == 1.25 && in.getFloat("gamma", gamma) &&
                    std::fabs(gamma - 2.2f) < 1e-6f && in.getBool("showGrid", grid) && grid &&
                    in.getBool("snap", snap) && !snap && in.getStringW("title", title) &&
                    title == QString::fromUtf8("Th\xc3\xa9i\xc3\xa8re = 1");
    if (!ok)
        problem = QStringLiteral("a setting read back differs");
    return ok;
}

// Bands, top to bottom: the three built-in value scales, a 12-colour built
// palette, the blend through that palette, and the ten-colour palette.
void renderSwatches(ZKImage& image) {
    const int width = 600, band = 40;
    image.init(ZKPixSize(width, band * 6), ZK_PACKING_RGBA);
    image.fillWithColor(ZKColor3ub(255, 255, 255));
    auto fillColumn = [&](int band0, int x, const ZKColor4ub& c) {
        image.fillRectWithColor(ZKPixRect(x, band0 * band + 2, x + 1, (band0 + 1) * band - 2), c);
    };
    for (int x = 0; x < width; ++x) {
        const float t = float(x) / float(width - 1);
        for (int scale = 1; scale <= 3; ++scale) {
            ZKColor4ub c;
            ZKColorServer::getColorFromnormalize_dValue(c, t, scale);
            fillColumn(scale - 1, x, c);
        }
    }
    ZKArray<ZKColor4ub> palette;
    ZKColorServer::buildColorPalette(palette, 12);
    for (int x = 0; x < width; ++x) {
        const int i = int((long long)x * palette.size() / width);
        fillColumn(3, x, palette[i]);
        fillColumn(4, x, ZKColorServer::colorBlend(palette, float(x) / float(width - 1)));
        const ZKColor3ub ten = ZKColorServer::getPalette10Color_3ub(x * 10 / width);
        fillColumn(5, x, ZKColor4ub(ten.r, ten.g, ten.b, 255));
    }
}

bool renderAndCheckImage(const ZKStringW& path, QString& problem) {
    ZKImage image;
    renderSwatches(image);
    QFile::remove(path);
    // The writer answers false whatever happened; loading it back is the check.
    ZKImageIO_Utils::saveImage_PNG(path, image);
    ZKImage back;
    if (!ZKImageIO_Utils::loadImage_PNG(path, back)) {
        problem = QStringLiteral("the PNG cannot be loaded back");
        return false;
    }
    if (back.getWidth() != image.getWidth() || back.getHeight() != image.getHeight() ||
        back.getPacking() != image.getPacking() ||
        std::memcmp(back.getPixels(), image.getPixels(), image.getByteCount()) != 0) {
        problem = QStringLiteral("the PNG's pixels differ from the image saved");
        return false;
    }
    return true;
}

struct Step {
    const char* label;
    bool ok;
    QString problem;
};

} // namespace

namespace zkutil {

int runDemo(const QStringList& args) {
    if (args.size() > 1)
        return fail(QStringLiteral("demo takes at most one DIR (see zkutil demo --help)"));
    QString folder;
    std::unique_ptr<QTemporaryDir> temporary;
    if (args.isEmpty()) {
        temporary = std::make_unique<QTemporaryDir>(QDir::temp().filePath("zkutil-demo-XXXXXX"));
        temporary->setAutoRemove(false);
        if (!temporary->isValid())
            return fail(QStringLiteral("cannot create a folder in the temporary folder"));
        folder = temporary->path();
    } else {
        folder = QDir(args[0]).absolutePath();
        if (!QDir().mkpath(folder))
            return fail(QStringLiteral("%1: cannot be created").arg(folder));
    }
    const QDir dir(folder);
    const ZKStringW documentPath(dir.filePath("document.zkb"));
    const ZKStringW settingsPath(dir.filePath("settings.txt"));
    const ZKStringW imagePath(dir.filePath("demo.png"));
    const ZKStringW logPath(dir.filePath("zkutil-demo.log"));

    ZKLog::init();
    ZKLog::setUserLogFile(logPath, true, true);
    ZKLog::enableUserLog(true);
    ZKLog::setAddTimeInLog(true);
    ZKLog::userLog("zkutil demo in %s", folder.toUtf8().constData());

    ZKDebugChrono chrono;
    chrono.start("zkutil demo");
    std::vector<Step> steps;
    auto finish = [&](const char* label, bool ok, const QString& problem) {
        chrono.pushTime(label);
        steps.push_back({label, ok, problem});
        ZKLog::userLog("%s: %s%s", label, ok ? "ok" : "FAILED ", problem.toUtf8().constData());
    };

    const DemoDocument document = makeDocument();
    finish("save document", saveDocument(document, documentPath), QString());
    QString problem;
    bool ok = verifyDocument(document, documentPath, problem);
    finish("reopen and verify document", ok, problem);
    problem.clear();
    ok = writeAndReadSettings(settingsPath, documentPath, problem);
    finish("write and read settings", ok, problem);
    problem.clear();
    ok = renderAndCheckImage(imagePath, problem);
    finish("render, save and reload PNG", ok, problem);
    ZKLog::enableUserLog(false);
    ZKLog::uninit();

    std::printf("zkutil demo in %s\n\nfiles written:\n", local8(folder).constData());
    for (const ZKStringW& path : {documentPath, settingsPath, imagePath, logPath})
        std::printf("  %-18s %8lld bytes\n", local8(QFileInfo(path).fileName()).constData(),
                    QFileInfo(path).size());
    std::printf("\nsteps:\n");
    bool allOk = true;
    const ZKStaticArray<double>& times = chrono.getTimes();
    for (size_t i = 0; i < steps.size(); ++i) {
        // Stored times are elapsed since start: a step lasts the difference.
        const double took = times[(long long)i] - (i == 0 ? 0.0 : times[(long long)i - 1]);
        std::printf("  %-30s %8.3f ms  %s%s%s\n", steps[i].label, took * 1000.0,
                    steps[i].ok ? "ok" : "FAILED", steps[i].problem.isEmpty() ? "" : ": ",
                    local8(steps[i].problem).constData());
        allOk = allOk && steps[i].ok;
    }
    std::printf("\n%s\n", allOk ? "all checks passed" : "some checks FAILED");
    return allOk ? kExitOk : kExitNo;
}

} // namespace zkutil
