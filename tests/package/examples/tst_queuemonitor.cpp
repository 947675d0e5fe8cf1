#include "CommandListModel.h"
#include "CommandListView.h"
#include "MonitorWindow.h"

#include <QAbstractButton>
#include <QAbstractItemModelTester>
#include <QApplication>
#include <QClipboard>
#include <QDropEvent>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QMimeData>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

using namespace Qt::StringLiterals;

class QueueMonitorTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void walk()
    {
        QLocale::setDefault(QLocale(QLocale::English)); // the C locale has no natural order
        QCoreApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
        for (const QString &name : {u"10"_s, u"9"_s, u"sums"_s, u"long"_s}) {
            QVERIFY(QFile(folder.filePath(name)).open(QIODevice::WriteOnly));
        }
        QVERIFY(QFile::resize(folder.filePath(u"long"_s), Q_INT64_C(1) << 33)); // seconds of work
        window.show();

        // Dropped files are digested in natural order.
        drop({url(u"10"_s), url(u"9"_s), url(u"missing"_s)});
        QTRY_COMPARE(statuses(), u"FFE"_s);
        QVERIFY(shown(2, CommandListModel::DetailRole).endsWith(folder.filePath(u"missing"_s)));
        select(0);
        trigger(u"Copy"_s);
        const QString digest = u"e3b0c44298fc1c149afbf4c8996fb92427ae41e4649b934ca495991b7852b855  "_s; // of nothing
        QCOMPARE(QGuiApplication::clipboard()->text(), digest + u'9');

        // The question whether to overwrite a file comes at once, and again when the save is tried again.
        QTimer::singleShot(0, this, [this] {
            auto *const dialog = window.findChild<QFileDialog *>();
            dialog->findChild<QLineEdit *>()->setText(folder.filePath(u"sums"_s));
            QTest::keyClick(dialog, Qt::Key_Return);
        });
        trigger(u"Save Digests"_s);
        QTRY_VERIFY(question() && question()->text() == "sums exists. Overwrite it?"_L1);
        drop({url(u"10"_s)}); // the queue asks again
        QTRY_COMPARE(statuses(), u"FFERQ"_s);
        QVERIFY(window.findChild<QLabel *>()->text().startsWith("Waiting for your answer, "_L1));
        question()->button(QMessageBox::No)->click();
        QTRY_COMPARE(statuses(), u"FFECF"_s);
        select(3);
        trigger(u"Try Again"_s);
        question()->button(QMessageBox::Yes)->click();
        QTRY_COMPARE(statuses(), u"FFEFF"_s);
        QFile sums(folder.filePath(u"sums"_s));
        QVERIFY(sums.open(QIODevice::ReadOnly));
        QCOMPARE(sums.readLine(), (digest + folder.filePath(u"9"_s) + u'\n').toUtf8());

        // What waits can be paused and cancelled, and a stop, which asks first, cancels the rest.
        trigger(u"Clear List"_s);
        drop({url(u"9"_s), url(u"10"_s), url(u"long"_s)});
        QTRY_COMPARE(statuses(), u"FFP"_s);
        trigger(u"Pause"_s);
        QTRY_COMPARE(statuses(), u"FFQ"_s);
        drop({url(u"sums"_s), url(u"long"_s)}); // does not end the pause; the one that waits is not listed twice
        select(2);
        trigger(u"Cancel Selected"_s);
        QTRY_COMPARE(statuses(), u"FFCQ"_s);
        trigger(u"Go On"_s);
        QTRY_COMPARE(statuses(), u"FFCF"_s);
        trigger(u"Try Again"_s); // in the same row
        QTRY_COMPARE(statuses(), u"FFPF"_s);
        QTimer::singleShot(0, this, [this] { question()->button(QMessageBox::Yes)->click(); });
        trigger(u"Stop"_s);
        QTRY_COMPARE(statuses(), u"FFCF"_s);
    }

private:
    QUrl url(const QString &name) const { return QUrl::fromLocalFile(folder.filePath(name)); }

    void drop(const QList<QUrl> &urls)
    {
        QMimeData files;
        files.setUrls(urls);
        QDragEnterEvent enter({}, Qt::CopyAction, &files, Qt::LeftButton, Qt::NoModifier);
        QDropEvent event({}, Qt::CopyAction, &files, Qt::LeftButton, Qt::NoModifier);
        QVERIFY(QCoreApplication::sendEvent(&window, &enter) && enter.isAccepted());
        QCoreApplication::sendEvent(&window, &event);
    }

    void select(int row) { list->setCurrentIndex(list->model()->index(row, 0)); }

    void trigger(const QString &text)
    {
        const QList<QAction *> actions = window.findChildren<QAction *>();
        const auto hasText = [&text](const QAction *action) { return action->iconText() == text; };
        QAction *const action = *std::find_if(actions.begin(), actions.end(), hasText);
        QTRY_VERIFY(action->isEnabled());
        action->trigger();
    }

    QMessageBox *question() const { return window.findChild<QMessageBox *>(); }
    QString shown(int row, int role) const { return list->model()->index(row, 0).data(role).toString(); }

    // One letter for each row's status.
    QString statuses() const
    {
        QString letters;
        for (int row = 0; row < list->model()->rowCount(); ++row) {
            letters += u"QPFCEORZ"_s.at(shown(row, CommandListModel::StatusRole).toInt());
        }
        return letters;
    }

    const QTemporaryDir folder;
    MonitorWindow window;
    CommandListView *const list = window.findChild<CommandListView *>();
    const QAbstractItemModelTester tester{list->model()};
};

QTEST_MAIN(QueueMonitorTest)
#include "tst_queuemonitor.moc"
