// zk_example: a short tour of what the library offers, printing each step.
#include <ZKUtils/ZKUtils.h>

#include <cstdio>

namespace {

class Shape : public ZKObject {
    ZK_DECLARE_CLASS(Shape)
public:
    int m_corners = 0;
};
ZK_IMPLEMENT_CLASS(Shape)

} // namespace

int main() {
    ZKStringC path("Models/Teapot.OBJ");
    std::printf("byte string   : \"%s\" ends with \".obj\" (any case): %s\n", path.constData(),
                path.endsWith(".obj", false) ? "yes" : "no");

    ZKStringC utf8("caf\xc3\xa9");
    ZKStringW wide(utf8);
    std::printf("wide string   : %d characters from %d UTF-8 bytes, Latin-1 form has %d bytes\n",
                int(wide.size()), int(utf8.size()), int(wide.getAsStringC().size()));
    std::printf("formatting    : %s / %s\n", ZKStringC::doubleStr(1.5).constData(),
                ZKStringW("%2-%1").arg("x", "y").toUtf8().constData());

    ZKArray<int> values;
    for (int i = 0; i < 10; ++i)
        values.push_back(i * i);
    std::printf("array         : %lld values, capacity %lld, last %d\n", values.size(),
                values.capacity(), values.back());

    for (int code = RC_OK; code <= RC_FILE_DO_NOT_EXIST + 1; ++code)
        std::printf("return code %d : %s\n", code,
                    ZKStringServer::retCodeAsString(code).constData());

    ZKClassType* type = ZKClassType::getFromName("Shape");
    ZKTyped* made = type ? type->createNewInstance() : nullptr;
    const bool recreated = made && made->getClassType() == type;
    std::printf("class registry: %d types; \"Shape\" re-created by name: %s\n",
                ZKClassType::m_numTypes, recreated ? "yes" : "no");
    delete made;
    return recreated ? 0 : 1;
}
