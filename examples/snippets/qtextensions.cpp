// An order of variants, documents that differ in the order of arrays, and a touch that acts as a press of the mouse.

//! [example]
#include <qtextensions/JsonCompare.h>
#include <qtextensions/QTouchToQMouseEventConversion.h>
#include <qtextensions/QVariantLess.h>

#include <QGuiApplication>
#include <QJsonDocument>
#include <QPointingDevice>
#include <QTextStream>
#include <QTouchEvent>
#include <QVariant>

#include <algorithm>

int main(int argc, char *argv[])
{
    QGuiApplication application(argc, argv);
    QTextStream out(stdout);

    // One type in one container.
    QVariantList dates{QDate(2024, 5, 1), QDate(2023, 12, 31)};
    std::sort(dates.begin(), dates.end(), qtextensions::QVariantLess());
    out << dates.first().toDate().toString(Qt::ISODate) << '\n';

    const auto written = QJsonDocument::fromJson(R"({"tags": ["a", "b"], "id": 1})");
    const auto read = QJsonDocument::fromJson(R"({"id": 1, "tags": ["b", "a"]})");
    out << (written == read) << json::compare(written, read) << '\n';

    // As an event filter does with a touch that its receiver does not understand.
    const QEventPoint point(0, QEventPoint::Pressed, QPointF(3, 4), QPointF(103, 104));
    const QTouchEvent touch(QEvent::TouchBegin, QPointingDevice::primaryPointingDevice(), Qt::NoModifier, {point});
    const QMouseEvent press = qtextensions::QTouchToQMouseEventConversion(&touch);
    out << (press.type() == QEvent::MouseButtonPress) << ' ' << press.position().x() << ' ' << press.position().y()
        << '\n';
}
//! [example]
