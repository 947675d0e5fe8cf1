#include "CommandListModel.h"
#include "CommandListView.h"
#include "MonitorWindow.h"

#include <QAbstractItemModelTester>
#include <QAction>
#include <QApplication>
#include <QCryptographicHash>
#include <QFileDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QRegularExpression>
#include <QSettings>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

static constexpr qint64 endless = Q_INT64_C(1) << 36; // bytes of a sparse file that takes minutes to digest

class QueueMonitorTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        QLocale::setDefault(QLocale(QLocale::English)); // the C locale has no natural order
        QCoreApplication::setOrganizationName(u"Tarnwick"_s);
        QSettings::setDefaultFormat(QSettings::IniFormat);
    }

    void init()
    {
        folder = std::make_unique<QTemporaryDir>();
        QVERIFY(QDir(folder->path()).mkpath(u"files"_s));
        QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, path(u"settings"_s));
        window = std::make_unique<MonitorWindow>();
        list = window->findChild<CommandListView *>();
        new QAbstractItemModelTester(list->model(), QAbstractItemModelTester::FailureReportingMode::QtTest, list);
        window->show();
        QVERIFY(QTest::qWaitForWindowActive(window.get()));
    }

    void cleanup()
    {
        window.reset(); // also in the middle of a digest
    }

    void digestsInNaturalOrder()
    {
        for (const char *const name : {"10", "9", "b 1"}) {
            writeFile("files/"_L1 + QLatin1String(name), name);
        }
        press(Qt::Key_O, Qt::ControlModifier | Qt::ShiftModifier);
        enterPath(u"files"_s);
        QTRY_COMPARE(statuses(), u"FFF"_s);
        QCOMPARE(shown(0, Qt::DisplayRole), u"9"_s);
        QCOMPARE(shown(1, Qt::DisplayRole), u"10"_s);
        QCOMPARE(shown(2, CommandListModel::ProgressRole), u"100"_s);
        QCOMPARE(shown(2, CommandListModel::DetailRole).toLatin1(),
            QCryptographicHash::hash("b 1", QCryptographicHash::Sha256).toHex());
        QTRY_VERIFY(isEnabled(u"Clear List"_s));
        press(Qt::Key_L);
        QCOMPARE(list->model()->rowCount(), 0);
    }

    void pausesCancelsAndStops()
    {
        writeFile(u"1"_s, {}, endless);
        writeFile(u"2"_s, {}, endless);
        addFiles({u"1"_s, u"2"_s});
        QTRY_COMPARE(statuses(), u"PQ"_s);
        press(Qt::Key_P);
        QTRY_COMPARE(statuses(), u"QQ"_s);
        addFiles({u"3"_s, u"1"_s}); // the one that waits is not listed twice
        QVERIFY(isEnabled(u"Go On"_s) && !isEnabled(u"Pause"_s));
        press(Qt::Key_G);
        addFiles({u"4"_s}); // does not pause again what was to go on
        QTRY_COMPARE(statuses(), u"PQQQ"_s);

        QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, centerOf(0));
        QTest::mouseClick(list->viewport(), Qt::LeftButton, Qt::ControlModifier, centerOf(2));
        press(Qt::Key_Delete, Qt::NoModifier);
        QTRY_COMPARE(statuses(), u"CPCQ"_s);
        press(Qt::Key_T);
        QTRY_COMPARE(statuses(), u"CCCC"_s);
        QTRY_VERIFY(isEnabled(u"Add Files"_s));
        writeFile(u"4"_s, "4");
        addFiles({u"4"_s}); // on another worker
        QTRY_COMPARE(statuses(), u"CCCCF"_s);
    }

    void asksBeforeOverwriting_data()
    {
        QTest::addColumn<int>("key");
        QTest::addColumn<QString>("end");

        QTest::newRow("overwrite") << int(Qt::Key_O) << u"FFF"_s;
        QTest::newRow("keep") << int(Qt::Key_K) << u"FCF"_s;
    }

    void asksBeforeOverwriting()
    {
        QFETCH(int, key);
        QFETCH(QString, end);
        writeFile(u"a\\b"_s, "content");
        writeFile(u"sums"_s, "old");
        addFiles({u"a\\b"_s});
        press(Qt::Key_S);
        enterPath(u"sums"_s);
        QTRY_COMPARE(statuses(), u"FR"_s);
        QTRY_VERIFY(isEnabled(u"Answer"_s));
        addFiles({u"sums"_s}); // the queue asks again
        press(Qt::Key_R);
        auto *const box = window->findChild<QMessageBox *>();
        box->activateWindow();
        QTRY_COMPARE(QApplication::activeWindow(), box);
        QTest::keyClick(box, static_cast<Qt::Key>(key), Qt::AltModifier);
        QTRY_COMPARE(statuses(), end);

        QFile sums(path(u"sums"_s));
        QVERIFY(sums.open(QIODevice::ReadOnly));
        const QByteArray digest = QCryptographicHash::hash("content", QCryptographicHash::Sha256).toHex();
        const QByteArray line = '\\' + digest + "  " + folder->path().toUtf8() + "/a\\\\b\n";
        QCOMPARE(sums.readAll(), key == Qt::Key_O ? line : QByteArray("old"));
    }

    void showsErrors()
    {
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"^CommandData failed"_s));
        addFiles({u"missing"_s});
        QTRY_COMPARE(statuses(), u"E"_s);
        QVERIFY(shown(0, Qt::AccessibleTextRole).contains(u"missing, Error, 0 %, No such file"_s));
        QTRY_VERIFY(!isEnabled(u"Stop"_s));
    }

    void takesTouchForPress()
    {
        writeFile(u"1"_s, {});
        writeFile(u"2"_s, {});
        addFiles({u"1"_s, u"2"_s});
        QTRY_COMPARE(statuses(), u"FF"_s);
        const std::unique_ptr<QPointingDevice> device(QTest::createTouchDevice());
        QTest::touchEvent(list->viewport(), device.get()).press(0, centerOf(1), list->viewport());
        QCOMPARE(list->selectionModel()->selectedIndexes(), QModelIndexList{row(1)});
        QTest::touchEvent(list->viewport(), device.get()).release(0, centerOf(1), list->viewport());
        QTest::mouseMove(list->viewport(), centerOf(0)); // after the end nothing is selected
        QCOMPARE(list->selectionModel()->selectedIndexes(), QModelIndexList{row(1)});
    }

    void keepsPlace()
    {
        const QRect place(20, 30, 640, 320);
        window->setGeometry(place);
        QVERIFY(window->close());
        QCOMPARE(QSettings().value("window/place").toString(), u"20,30,640,320"_s);
        window = std::make_unique<MonitorWindow>();
        QCOMPARE(window->geometry(), place);
    }

private:
    QString path(const QString &name) const { return folder->filePath(name); }
    QModelIndex row(int number) const { return list->model()->index(number, 0); }
    QPoint centerOf(int number) const { return list->visualRect(row(number)).center(); }
    QString shown(int number, int role) const { return row(number).data(role).toString(); }

    void writeFile(const QString &name, const QByteArray &content, qint64 size = -1) const
    {
        QFile file(path(name));
        QVERIFY(file.open(QIODevice::WriteOnly) && file.write(content) == content.size());
        QVERIFY(size < 0 || file.resize(size));
    }

    void addFiles(QStringList names) const
    {
        for (QString &name : names) {
            name = path(name);
        }
        window->addPaths(names);
    }

    void press(int key, Qt::KeyboardModifiers modifiers = Qt::ControlModifier) const
    {
        window->activateWindow(); // a dialog may have closed just now
        QTRY_COMPARE(QApplication::activeWindow(), window.get());
        QTest::keyClick(window.get(), static_cast<Qt::Key>(key), modifiers);
    }

    void enterPath(const QString &name) const
    {
        auto *const dialog = window->findChild<QFileDialog *>();
        dialog->findChild<QLineEdit *>()->setText(path(name));
        QTest::keyClick(dialog, Qt::Key_Return);
    }

    // The first letter of each row's status.
    QString statuses() const
    {
        QString letters;
        for (int number = 0; number < list->model()->rowCount(); ++number) {
            letters += shown(number, CommandListModel::StatusNameRole).at(0);
        }
        return letters;
    }

    bool isEnabled(const QString &text) const
    {
        const QList<QAction *> actions = window->findChildren<QAction *>();
        return std::any_of(actions.begin(), actions.end(), [&text](const QAction *action) {
            return action->iconText() == text && action->isEnabled();
        });
    }

    std::unique_ptr<QTemporaryDir> folder;
    std::unique_ptr<MonitorWindow> window;
    CommandListView *list = nullptr;
};

QTEST_MAIN(QueueMonitorTest)
#include "tst_queuemonitor.moc"
