#include "platform/system/DesktopSystemServices.h"

#include <QDateTime>
#include <QLocale>

#include <cmath>

#include <gtest/gtest.h>

namespace {

struct TDateRow {
    double Ole;
    QDateTime Moment;
};

class OleDates : public testing::TestWithParam<TDateRow> {};

TEST_P(OleDates, ShowTheMomentInTheUsersFormat) {
    TDesktopSystemServices services({});
    const QLocale locale = QLocale::system();
    const QDateTime& moment = GetParam().Moment;
    EXPECT_EQ(services.DateTimeText(GetParam().Ole),
              locale.toString(moment, QLocale::ShortFormat).toStdString());
    EXPECT_EQ(services.ShortDateText(GetParam().Ole),
              locale.toString(moment.date(), QLocale::ShortFormat).toStdString());
}

QDateTime At(int year, int month, int day, int hour, int minute, int second = 0) {
    return {QDate(year, month, day), QTime(hour, minute, second), Qt::UTC};
}

INSTANTIATE_TEST_SUITE_P(Rows, OleDates,
                         testing::Values(TDateRow{0.0, At(1899, 12, 30, 0, 0)},
                                         TDateRow{1.5, At(1899, 12, 31, 12, 0)},
                                         TDateRow{-1.25, At(1899, 12, 29, 6, 0)},
                                         TDateRow{38353.999988425926, At(2005, 1, 1, 23, 59, 59)},
                                         TDateRow{45351.25, At(2024, 2, 29, 6, 0)}));

TEST(OleDate, NowIsTheLocalTimeOfDay) {
    TDesktopSystemServices services({});
    const QDateTime before = QDateTime::currentDateTime();
    const double now = services.Now();
    const QDateTime after = QDateTime::currentDateTime();
    const auto seconds = std::llround(now * 86'400.0);
    const QDateTime shown = QDate(1899, 12, 30).startOfDay(Qt::UTC).addSecs(seconds);
    const QDateTime local(shown.date(), shown.time());
    EXPECT_LE(before.addSecs(-1), local);
    EXPECT_LE(local, after.addSecs(1));
}

} // namespace
