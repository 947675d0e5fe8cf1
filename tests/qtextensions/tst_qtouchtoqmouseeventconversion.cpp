#include <qtextensions/QTouchToQMouseEventConversion.h>

#include <QPointingDevice>
#include <QTest>
#include <QWindow>

#include <memory>

namespace {
void checkPress(const QMouseEvent &mouse)
{
    QCOMPARE(mouse.type(), QEvent::MouseButtonPress);
    QCOMPARE(mouse.button(), Qt::LeftButton);
    QCOMPARE(mouse.buttons(), Qt::LeftButton);
    QCOMPARE(mouse.modifiers(), Qt::NoModifier);
    QCOMPARE(mouse.scenePosition(), mouse.position());
    QCOMPARE(mouse.globalPosition(), mouse.position());
    QCOMPARE(mouse.pointingDevice(), QPointingDevice::primaryPointingDevice());
}

class TouchWindow : public QWindow
{
public:
    QList<QPointF> positions;

protected:
    void touchEvent(QTouchEvent *event) override
    {
        const QMouseEvent mouse = qtextensions::QTouchToQMouseEventConversion(event);
        checkPress(mouse);
        positions << mouse.position();
        event->accept();
    }
};
} // namespace

class QTouchToQMouseEventConversionTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void sentToAWindow()
    {
        const auto device = std::unique_ptr<QPointingDevice>(QTest::createTouchDevice());
        TouchWindow window;
        window.setGeometry(100, 200, 300, 300);
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));

        QTest::touchEvent(&window, device.get()).press(0, QPoint(10, 20), &window).press(1, QPoint(70, 80), &window);
        QTest::touchEvent(&window, device.get()).move(0, QPoint(11, 21), &window).stationary(1);
        QTest::touchEvent(&window, device.get())
            .release(0, QPoint(12, 22), &window)
            .release(1, QPoint(70, 80), &window);

        QCOMPARE(window.positions, QList<QPointF>({{10, 20}, {11, 21}, {12, 22}}));
    }

    void madeByHand()
    {
        const QEventPoint point(7, QEventPoint::Released, QPointF(1.5, 2.5), QPointF(300, 400));
        const QTouchEvent cancel(QEvent::TouchCancel, nullptr, Qt::ShiftModifier, {point});
        checkPress(qtextensions::QTouchToQMouseEventConversion(&cancel));

        const QTouchEvent empty(QEvent::TouchBegin);
        for (const QTouchEvent *event : {static_cast<const QTouchEvent *>(nullptr), &empty}) {
            const QMouseEvent mouse = qtextensions::QTouchToQMouseEventConversion(event);
            QCOMPARE(mouse.type(), QEvent::None);
            QCOMPARE(mouse.globalPosition(), QPointF());
            QCOMPARE(mouse.buttons() | mouse.button(), Qt::NoButton);
        }
    }
};

QTEST_MAIN(QTouchToQMouseEventConversionTest)
#include "tst_qtouchtoqmouseeventconversion.moc"
