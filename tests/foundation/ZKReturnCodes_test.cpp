#include "ZKReturnCodes.h"
#include "ZKStringServer.h"

#include <gtest/gtest.h>

#include <climits>

TEST(ZKReturnCodes, CodesHaveTheirFixedNumbersAndNames) {
    const std::pair<int, const char*> codes[] = {{RC_OK, "RC_OK"},
                                                 {RC_FAILED, "RC_FAILED"},
                                                 {RC_BAD_INPUT, "RC_BAD_INPUT"},
                                                 {RC_ABORTED, "RC_ABORTED"},
                                                 {RC_FILE_ACCESS_ERROR, "RC_FILE_ACCESS_ERROR"},
                                                 {RC_FILE_CONTENT_ERROR, "RC_FILE_CONTENT_ERROR"},
                                                 {RC_FILE_DO_NOT_EXIST, "RC_FILE_DO_NOT_EXIST"}};
    for (int i = 0; i < 7; ++i) {
        EXPECT_EQ(codes[i].first, i);
        EXPECT_EQ(ZKStringServer::retCodeAsString(i), codes[i].second);
    }
    for (int unknown : {7, -1, INT_MIN})
        EXPECT_EQ(ZKStringServer::retCodeAsString(unknown), "UNKNOWN RET CODE");
}
