#include "ZKTimeServer.h"

#include "ZKDate.h"
#include "ZKDateTime.h"
#include "ZKNative.h"

#include <QDate>
#include <QDateTime>
#include <QTime>

#include <chrono>
#include <ctime>
#include <unistd.h>

namespace {

// The start of the application clock; set once by InitTimeServer, before any
// thread starts, and read-only afterwards.
struct AppClockStart {
    QTime timeOfDay;
    double monotonicSeconds = 0.0;
    bool initDone = false;
};

AppClockStart& appClockStart() {
    static AppClockStart start;
    return start;
}

const char* const s_dayNames[7] = {"Monday", "Tuesday",  "Wednesday", "Thursday",
                                   "Friday", "Saturday", "Sunday"};
const char* const s_dayShortNames[7] = {"Mon", "Tue", "Wed", "Thu", "Fri", "Sat", "Sun"};
const char* const s_monthNames[12] = {"January",   "February", "March",    "April",
                                      "May",       "June",     "July",     "August",
                                      "September", "October",  "November", "December"};
const char* const s_monthShortNames[12] = {"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                           "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};

template <int N>
ZKStringC tableEntry(const char* const (&names)[N], const char* const (&shortNames)[N], int index,
                     bool shortForm) {
    if (index < 0 || index >= N)
        return ZKStringC();
    return ZKStringC(shortForm ? shortNames[index] : names[index]);
}

QDate currentDate(bool local) {
    return local ? QDate::currentDate() : QDateTime::currentDateTimeUtc().date();
}

QDateTime currentDateTime(bool local) {
    // The local form reads date and time separately, as the local fields do.
    return local ? QDateTime(QDate::currentDate(), QTime::currentTime())
                 : QDateTime::currentDateTimeUtc();
}

} // namespace

bool ZKTimeServer::InitTimeServer() {
    AppClockStart& start = appClockStart();
    if (!start.initDone) {
        start.timeOfDay = QTime::currentTime();
        start.monotonicSeconds = ZKNative::monotonicSeconds();
        start.initDone = true;
    }
    return true;
}

int ZKTimeServer::sleep(unsigned ms) {
    return usleep(useconds_t(ms) * 1000u);
}

long long ZKTimeServer::clock() {
    return (long long)std::clock();
}

long long ZKTimeServer::getAppTimeInMS() {
    const AppClockStart& start = appClockStart();
    if (!start.initDone)
        return 0;
    // Kept: a time-of-day difference, so it wraps at midnight.
    return start.timeOfDay.msecsTo(QTime::currentTime());
}

double ZKTimeServer::getAppTimeInS() {
    const AppClockStart& start = appClockStart();
    if (!start.initDone)
        return 0.0;
    return ZKNative::monotonicSeconds() - start.monotonicSeconds;
}

long long ZKTimeServer::getMilliSecondsSinceEpoch() {
    using namespace std::chrono;
    const long long us =
        duration_cast<microseconds>(system_clock::now().time_since_epoch()).count();
    return us / 1000;
}

double ZKTimeServer::getSecondsSinceEpoch() {
    return double(getMilliSecondsSinceEpoch()) / 1000.0;
}

long long ZKTimeServer::perfCounter() {
    return 0;
}

double ZKTimeServer::perfCounterD() {
    return 0.0;
}

long long ZKTimeServer::getSysTimeInMS() {
    return 0;
}

double ZKTimeServer::getSysTimeInS() {
    return 0.0;
}

int ZKTimeServer::getSystemTime(int& year, int& month, int& day, int& hour, int& minute,
                                int& second, int& ms, bool local) {
    const QDateTime now = currentDateTime(local);
    const QDate date = now.date();
    const QTime time = now.time();
    year = date.year();
    month = date.month();
    day = date.day();
    hour = time.hour();
    minute = time.minute();
    second = time.second();
    ms = time.msec();
    return ms;
}

void ZKTimeServer::getSystemTime(unsigned short& year, unsigned char& month, unsigned char& day,
                                 unsigned char& hour, unsigned char& minute, unsigned char& second,
                                 unsigned short& ms, bool local) {
    int y, mo, d, h, mi, s, milli;
    getSystemTime(y, mo, d, h, mi, s, milli, local);
    year = (unsigned short)y;
    month = (unsigned char)mo;
    day = (unsigned char)d;
    hour = (unsigned char)h;
    minute = (unsigned char)mi;
    second = (unsigned char)s;
    ms = (unsigned short)milli;
}

void ZKTimeServer::getSystemTime(int& hour, int& minute, int& second, int& ms, bool local) {
    const QTime time = local ? QTime::currentTime() : QDateTime::currentDateTimeUtc().time();
    hour = time.hour();
    minute = time.minute();
    second = time.second();
    ms = time.msec();
}

void ZKTimeServer::getSystemDate(int& year, int& month, int& day, bool local) {
    const QDate date = currentDate(local);
    year = date.year();
    month = date.month();
    day = date.day();
}

void ZKTimeServer::getSystemDate(ZKDate& date) {
    date = ZKDate(QDate::currentDate());
}

void ZKTimeServer::getSystemDateTime(ZKDateTime& dateTime, bool local) {
    dateTime = ZKDateTime(local ? QDateTime::currentDateTime() : QDateTime::currentDateTimeUtc());
}

int ZKTimeServer::getDayOfWeek(bool local) {
    return currentDate(local).dayOfWeek();
}

ZKStringC ZKTimeServer::getDayAsString(int index, bool shortForm) {
    return tableEntry(s_dayNames, s_dayShortNames, index, shortForm);
}

ZKStringC ZKTimeServer::getMonthAsString(int index, bool shortForm) {
    return tableEntry(s_monthNames, s_monthShortNames, index, shortForm);
}

ZKStringC ZKTimeServer::getDayOfWeekAsString(bool shortForm, bool local) {
    // Kept: no "- 1"; the day after today's name, empty on a Sunday.
    return getDayAsString(getDayOfWeek(local), shortForm);
}
