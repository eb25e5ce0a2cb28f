// ZKTimeServer.h: clocks, the current date and time, and day and month names.
//
// A server class: static functions only. The application clock
// (getAppTimeInS, getAppTimeInMS) counts from the first InitTimeServer call;
// the library never calls InitTimeServer on its own, so the application calls
// it once at start-up, before any thread is started (the start values are
// plain statics, not locked). Before that call both application clocks read 0.
//
// getAppTimeInS runs on the platform's monotonic clock; getAppTimeInMS is the
// time of day difference from the start and wraps at midnight.
//
// Threads: after InitTimeServer every function may be called from any thread.
#pragma once

#include "ZKExport.h"
#include "ZKStringC.h"

class ZKDate;
class ZKDateTime;

class ZKUTILS_EXPORT ZKTimeServer {
public:
    ZKTimeServer() = delete;

    // The first call records the start of the application clock; later calls
    // do nothing. Always true.
    static bool InitTimeServer();

    // Suspends the calling thread for ms milliseconds (usleep); usleep's result.
    static int sleep(unsigned ms);
    // The C library's processor clock, in its CLOCKS_PER_SEC ticks.
    static long long clock();

    // Milliseconds from the start time of day to the current time of day: it
    // wraps at midnight. 0 before InitTimeServer.
    static long long getAppTimeInMS();
    // Seconds on the monotonic clock since InitTimeServer; 0 before it.
    static double getAppTimeInS();

    // Wall-clock time since 1970-01-01 UTC: whole milliseconds (truncated from
    // the system clock's microseconds) and the same milliseconds / 1000.0.
    static long long getMilliSecondsSinceEpoch();
    static double getSecondsSinceEpoch();

    // Always 0: there is no performance counter or system-time clock.
    static long long perfCounter();
    static double perfCounterD();
    static long long getSysTimeInMS();
    static double getSysTimeInS();

    // The current date and time, local or UTC; month and day are 1-based.
    // Returns ms.
    static int getSystemTime(int& year, int& month, int& day, int& hour, int& minute, int& second,
                             int& ms, bool local = true);
    static void getSystemTime(unsigned short& year, unsigned char& month, unsigned char& day,
                              unsigned char& hour, unsigned char& minute, unsigned char& second,
                              unsigned short& ms, bool local = true);
    static void getSystemTime(int& hour, int& minute, int& second, int& ms, bool local = true);
    static void getSystemDate(int& year, int& month, int& day, bool local = true);
    // Today's local date.
    static void getSystemDate(ZKDate& date);
    static void getSystemDateTime(ZKDateTime& dateTime, bool local = true);

    // Today's day of week: 1 for Monday ... 7 for Sunday.
    static int getDayOfWeek(bool local = true);

    // Name tables: index 0 is Monday (January); an index outside the table
    // gives an empty string. The short forms are three letters ("Mon", "Jan").
    static ZKStringC getDayAsString(int index, bool shortForm = false);
    static ZKStringC getMonthAsString(int index, bool shortForm = false);
    // Kept: the 1-based day of week indexes the 0-based table unchanged, so a
    // Monday gives "Tuesday" and a Sunday the empty string; callers rely on it.
    static ZKStringC getDayOfWeekAsString(bool shortForm = false, bool local = true);
};
