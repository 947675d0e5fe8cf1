#include <qtextensions/QTouchToQMouseEventConversion.h>

#include <QPointingDevice>
#include <QTest>
#include <QWindow>

#include <memory>

using qtextensions::QTouchToQMouseEventConversion;

namespace {

void comparePress(const QMouseEvent &mouse, const QPointF &expected)
{
    QCOMPARE(mouse.type(), QEvent::MouseButtonPress);
    QCOMPARE(mouse.position(), expected);
    QCOMPARE(mouse.scenePosition(), expected);
    QCOMPARE(mouse.globalPosition(), expected);
    QCOMPARE(mouse.button(), Qt::LeftButton);
    QCOMPARE(mouse.buttons(), Qt::LeftButton);
    QCOMPARE(mouse.modifiers(), Qt::NoModifier);
    QCOMPARE(mouse.pointingDevice(), QPointingDevice::primaryPointingDevice());
}

// Only an event that a window receives has local positions.
class TouchWindow : public QWindow
{
public:
    int received = 0;

protected:
    void touchEvent(QTouchEvent *event) override
    {
        const QTouchEvent cancel(QEvent::TouchCancel, event->pointingDevice(), Qt::ShiftModifier, event->points());
        comparePress(QTouchToQMouseEventConversion(event), QPointF(10, 20));
        comparePress(QTouchToQMouseEventConversion(&cancel), QPointF(10, 20));
        ++received;
    }
};

} // namespace

class QTouchToQMouseEventConversionTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void pressesAtTheFirstPoint()
    {
        const auto device = std::unique_ptr<QPointingDevice>(QTest::createTouchDevice());
        TouchWindow window;
        window.setGeometry(100, 200, 300, 300);
        QTest::touchEvent(&window, device.get()).press(0, QPoint(10, 20));
        QTest::touchEvent(&window, device.get()).move(0, QPoint(10, 20)).press(1, QPoint(70, 80));
        QTest::touchEvent(&window, device.get()).release(0, QPoint(10, 20)).release(1, QPoint(70, 80));
        QCOMPARE(window.received, 3);
    }

    void withoutPoints()
    {
        const QTouchEvent empty(QEvent::TouchBegin);
        for (const QTouchEvent *event : {static_cast<const QTouchEvent *>(nullptr), &empty}) {
            const QMouseEvent mouse = QTouchToQMouseEventConversion(event);
            QCOMPARE(mouse.type(), QEvent::None);
            QCOMPARE(mouse.globalPosition(), QPointF());
            QCOMPARE(mouse.buttons() | mouse.button(), Qt::NoButton);
        }
    }
};

QTEST_MAIN(QTouchToQMouseEventConversionTest)
#include "tst_qtouchtoqmouseeventconversion.moc"
