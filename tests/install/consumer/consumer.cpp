// An outside program: includes the umbrella header the installed way and uses
// the exported classes and the class-type registry.
#include <ZKUtils/ZKUtils.h>

#include <cstdio>

int main() {
    ZKArray<ZKStringC> parts;
    parts.push_back(ZKStringC::intStr(42));
    parts.push_back(ZKStringServer::retCodeAsString(RC_FILE_DO_NOT_EXIST));
    ZKStringW wide(parts[1]);
    const bool typesOk = ZKClassType::getFromName("ZKObject") == ZKObject::getClassTypeStatic();
    const bool ok = parts[0] == "42" && wide == QStringLiteral("RC_FILE_DO_NOT_EXIST") && typesOk;
    std::printf("consumer: %s\n", ok ? "ok" : "FAILED");
    return ok ? 0 : 1;
}
