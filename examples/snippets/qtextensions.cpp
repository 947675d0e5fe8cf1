// An order of variants, JSON documents that differ in the order of arrays, and a touch that acts as a press of the
// mouse.

//! [example]
#include <qtextensions/JsonCompare.h>
#include <qtextensions/QTouchToQMouseEventConversion.h>
#include <qtextensions/QVariantLess.h>

#include <QGuiApplication>
#include <QJsonDocument>
#include <QPointingDevice>
#include <QTest>
#include <QTextStream>
#include <QVariant>
#include <QWindow>

#include <algorithm>
#include <memory>

// A window that handles the mouse and converts touches.
class Canvas : public QWindow
{
protected:
    void mousePressEvent(QMouseEvent *event) override
    {
        QTextStream(stdout) << "pressed at " << event->position().x() << ", " << event->position().y() << Qt::endl;
    }
    void touchEvent(QTouchEvent *event) override
    {
        QMouseEvent press = qtextensions::QTouchToQMouseEventConversion(event);
        QCoreApplication::sendEvent(this, &press);
    }
};

int main(int argc, char *argv[])
{
    QGuiApplication application(argc, argv);
    QTextStream out(stdout);

    // Variants of one type in one list.
    QVariantList dates{QDate(2024, 5, 1), QDate(2023, 12, 31)};
    std::sort(dates.begin(), dates.end(), qtextensions::QVariantLess());
    out << dates.first().toDate().toString(Qt::ISODate) << Qt::endl;

    const auto written = QJsonDocument::fromJson(R"({"tags": ["a", "b"], "id": 1})");
    const auto read = QJsonDocument::fromJson(R"({"id": 1, "tags": ["b", "a"]})");
    out << "Qt: " << (written == read) << ", here: " << json::compare(written, read) << Qt::endl;

    // A finger touches the window.
    Canvas canvas;
    canvas.setGeometry(100, 200, 300, 300);
    canvas.show();
    const auto device = std::unique_ptr<QPointingDevice>(QTest::createTouchDevice());
    QTest::touchEvent(&canvas, device.get()).press(0, QPoint(3, 4), &canvas);
}
//! [example]
