#include "ZKReturnCodes.h"
#include "ZKStringServer.h"

#include <gtest/gtest.h>

#include <climits>

TEST(ZKReturnCodes, CodesHaveTheirFixedNumbersAndNames) {
    EXPECT_EQ(RC_OK, 0);
    EXPECT_EQ(RC_FAILED, 1);
    EXPECT_EQ(RC_BAD_INPUT, 2);
    EXPECT_EQ(RC_ABORTED, 3);
    EXPECT_EQ(RC_FILE_ACCESS_ERROR, 4);
    EXPECT_EQ(RC_FILE_CONTENT_ERROR, 5);
    EXPECT_EQ(RC_FILE_DO_NOT_EXIST, 6);
    EXPECT_EQ(ZKStringServer::retCodeAsString(0), "RC_OK");
    EXPECT_EQ(ZKStringServer::retCodeAsString(1), "RC_FAILED");
    EXPECT_EQ(ZKStringServer::retCodeAsString(2), "RC_BAD_INPUT");
    EXPECT_EQ(ZKStringServer::retCodeAsString(3), "RC_ABORTED");
    EXPECT_EQ(ZKStringServer::retCodeAsString(4), "RC_FILE_ACCESS_ERROR");
    EXPECT_EQ(ZKStringServer::retCodeAsString(5), "RC_FILE_CONTENT_ERROR");
    EXPECT_EQ(ZKStringServer::retCodeAsString(6), "RC_FILE_DO_NOT_EXIST");
}

TEST(ZKReturnCodes, UnknownCodesIncludingNegativeOnes) {
    EXPECT_EQ(ZKStringServer::retCodeAsString(7), "UNKNOWN RET CODE");
    EXPECT_EQ(ZKStringServer::retCodeAsString(-1), "UNKNOWN RET CODE");
    EXPECT_EQ(ZKStringServer::retCodeAsString(INT_MIN), "UNKNOWN RET CODE");
}
