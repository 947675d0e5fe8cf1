#include <qtextensions/QTouchToQMouseEventConversion.h>

#include <QGuiApplication>
#include <QPointingDevice>
#include <QTest>
#include <QWindow>

using namespace Qt::StringLiterals;

namespace {
// Converts each touch event as it arrives and notes what came out.
class TouchWindow : public QWindow
{
public:
    QStringList notes;

protected:
    void touchEvent(QTouchEvent *event) override
    {
        const QMouseEvent mouse = qtextensions::QTouchToQMouseEventConversion(event);
        const bool isOnePosition =
            mouse.scenePosition() == mouse.position() && mouse.globalPosition() == mouse.position();
        const bool isLeftPress = mouse.type() == QEvent::MouseButtonPress && mouse.button() == Qt::LeftButton
            && mouse.buttons() == Qt::LeftButton && mouse.modifiers() == Qt::NoModifier;
        const bool isPrimary = mouse.pointingDevice() == QPointingDevice::primaryPointingDevice();
        notes << u"%1 %2,%3 %4%5%6"_s.arg(int(event->type()))
                     .arg(mouse.position().x())
                     .arg(mouse.position().y())
                     .arg(isOnePosition)
                     .arg(isLeftPress)
                     .arg(isPrimary);
        event->accept();
    }
};
} // namespace

class QTouchToQMouseEventConversionTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void sentToAWindow();
    void modifiersPlayNoPart();
    void withoutPoint();
};

void QTouchToQMouseEventConversionTest::sentToAWindow()
{
    const auto device = std::unique_ptr<QPointingDevice>(QTest::createTouchDevice());
    TouchWindow window;
    window.setGeometry(100, 200, 300, 300);
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));

    QTest::touchEvent(&window, device.get()).press(0, QPoint(10, 20), &window).press(1, QPoint(70, 80), &window);
    QTest::touchEvent(&window, device.get()).move(0, QPoint(11, 21), &window).stationary(1);
    QTest::touchEvent(&window, device.get()).release(0, QPoint(12, 22), &window).release(1, QPoint(70, 80), &window);

    const QStringList expected = {
        u"%1 10,20 111"_s.arg(int(QEvent::TouchBegin)),
        u"%1 11,21 111"_s.arg(int(QEvent::TouchUpdate)),
        u"%1 12,22 111"_s.arg(int(QEvent::TouchEnd)),
    };
    QCOMPARE(window.notes, expected);
}

void QTouchToQMouseEventConversionTest::modifiersPlayNoPart()
{
    const QEventPoint point(7, QEventPoint::Released, QPointF(1.5, 2.5), QPointF(300, 400));
    const QTouchEvent cancel(QEvent::TouchCancel, nullptr, Qt::ShiftModifier | Qt::ControlModifier, {point});
    const QMouseEvent mouse = qtextensions::QTouchToQMouseEventConversion(&cancel);
    QCOMPARE(mouse.type(), QEvent::MouseButtonPress);
    QCOMPARE(mouse.modifiers(), Qt::NoModifier);
    QCOMPARE(mouse.globalPosition(), point.position());
}

void QTouchToQMouseEventConversionTest::withoutPoint()
{
    const QTouchEvent empty(QEvent::TouchBegin);
    for (const QTouchEvent *event : {static_cast<const QTouchEvent *>(nullptr), &empty}) {
        const QMouseEvent mouse = qtextensions::QTouchToQMouseEventConversion(event);
        QCOMPARE(mouse.type(), QEvent::None);
        QCOMPARE(mouse.position(), QPointF());
        QCOMPARE(mouse.globalPosition(), QPointF());
        QCOMPARE(mouse.button(), Qt::NoButton);
        QCOMPARE(mouse.buttons(), Qt::NoButton);
    }
}

QTEST_MAIN(QTouchToQMouseEventConversionTest)
#include "tst_qtouchtoqmouseeventconversion.moc"
