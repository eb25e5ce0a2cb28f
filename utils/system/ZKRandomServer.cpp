#include "ZKRandomServer.h"

#include <QtGlobal>

#include <cstdlib>
#include <ctime>

namespace {
// Plain flag: the first call is expected before threads start.
bool s_seeded = false;
} // namespace

void ZKRandomServer::init() {
    if (!s_seeded) {
        std::srand(unsigned(std::time(nullptr)));
        s_seeded = true;
    }
}

void ZKRandomServer::buildRandomString(ZKStringC& out, int length, bool lower, bool upper,
                                       bool digits) {
    init();
    const int nbLower = lower ? 26 : 0;
    const int nbUpper = upper ? 26 : 0;
    const int nbDigits = digits ? 10 : 0;
    const int n = nbLower + nbUpper + nbDigits;

    // Kept: a negative length is a fatal error, as the sizing assertion was.
    if (length < 0)
        qFatal("ZKRandomServer::buildRandomString: ASSERT: \"i >= 0\" (negative length %d)",
               length);
    out.clear();
    out.resize(length);
    // Kept: no character class with characters to draw is a fatal error (the
    // division by zero); a length of 0 draws nothing and so never reaches it.
    if (length > 0 && n == 0)
        qFatal("ZKRandomServer::buildRandomString: division by zero: no character class enabled");

    char* data = out.data();
    for (int i = 0; i < length; ++i) {
        // Kept: the plain modulo, slight bias included, is the mapping callers
        // reproduce.
        const int r = std::rand() % n;
        if (r < nbLower)
            data[i] = char('a' + r);
        else if (r < nbLower + nbUpper)
            data[i] = char('A' + r - nbLower);
        else
            data[i] = char('0' + r - nbLower - nbUpper);
    }
}
