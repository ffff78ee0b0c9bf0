// Tables of databases in the window: chosen by keys, saved with the graph and read again.
#include "data/series/ds_info.h"
#include "host/window_fixture.h"

#include <QDirIterator>
#include <QElapsedTimer>
#include <QInputDialog>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QProcess>
#include <QSqlDatabase>
#include <QStandardPaths>
#include <QTableWidget>
#include <QTimer>
#if __has_include(<QTcpServer>)
#include <QTcpServer>
#endif

namespace lumoplot {
namespace {

class OpenDatabaseTest : public TWindowTest {
protected:
    void SetUp() override {
        if (QStandardPaths::findExecutable(QStringLiteral("sqlite3")).isEmpty())
            GTEST_SKIP() << "the program sqlite3 is missing";
        Sql("create table first(a text); insert into first values('x');"
            "create table second(t real, note text, v real); insert into second "
            "values(1,'a',10),(2,'b',20),(3,'c',null);");
    }

    QString File() const { return PathOf("lab.data"); }
    void Sql(const QString& statements) const {
        EXPECT_EQ(QProcess::execute(QStringLiteral("sqlite3"), {File(), statements}), 0);
    }
    static void InChooser(std::function<void(QDialog&)> action) {
        WhenModal<QDialog>([action](QDialog& dialog) {
            ASSERT_EQ(dialog.objectName(), QStringLiteral("TDatabaseChooser"));
            action(dialog);
        });
    }
};

TEST_F(OpenDatabaseTest, ATableIsTakenByTwoKeysAndReloaded) {
    InChooser([](QDialog& dialog) {
        auto& tables = Control<QListWidget>(dialog, "lst_Tables");
        EXPECT_TRUE(tables.hasFocus());
        EXPECT_FALSE(Control<QDialogButtonBox>(dialog, "buttons").button(QDialogButtonBox::Ok)->isEnabled());
        QTest::keyClick(&tables, Qt::Key_Down);
        EXPECT_EQ(Control<QTableWidget>(dialog, "tbl_Preview").rowCount(), 3);
        EXPECT_EQ(Control<QComboBox>(dialog, "cbx_X").currentData().toString(), QStringLiteral("t"));
        EXPECT_EQ(Control<QComboBox>(dialog, "cbx_Y").currentData().toString(), QStringLiteral("v"));
        EXPECT_LE(dialog.minimumSizeHint().width(), 760);
        EXPECT_LE(dialog.minimumSizeHint().height(), 440);
        QTest::keyClick(&tables, Qt::Key_Return);
    });
    Open(File());
    ASSERT_EQ(Graph().Series().size(), 1u);
    EXPECT_EQ(First().Count(), 2);
    EXPECT_EQ(First().SeriesName(), "v");
    EXPECT_EQ(Graph().XAxis()->Title(), "t");
    const QString saved = PathOf("saved.ltp");
    Window->Document().SaveTo(saved);
    Window->Document().New();
    Open(saved);
    EXPECT_EQ(First().DataSourceInfo().Kind(), TSourceKind::Database);
    EXPECT_EQ(First().DataSourceInfo().Database().connection, File().toStdString());
    Sql("insert into second values(4,'d',40)");
    Control<QAction>(*Window, "a_LoadEveryRow").trigger();
    EXPECT_EQ(First().Count(), 3);
}

TEST_F(OpenDatabaseTest, AnOwnSelectIsShownAndTaken) {
    InChooser([](QDialog& dialog) {
        auto& text = Control<QPlainTextEdit>(dialog, "m_Select");
        text.setPlainText(QStringLiteral("drop table second"));
        Click(dialog, "cb_OwnSelect");
        EXPECT_FALSE(Control<QDialogButtonBox>(dialog, "buttons").button(QDialogButtonBox::Ok)->isEnabled());
        EXPECT_TRUE(Control<QLabel>(dialog, "lblMessage").text().contains(QStringLiteral("SELECT")));
        Click(dialog, "cb_OwnSelect");
        text.setPlainText(QStringLiteral("select t, v*2 as twice from second where v is not null"));
        Click(dialog, "cb_OwnSelect");
        QTest::mouseClick(Control<QDialogButtonBox>(dialog, "buttons").button(QDialogButtonBox::Ok),
                          Qt::LeftButton);
    });
    Open(File());
    ASSERT_EQ(Graph().Series().size(), 1u);
    EXPECT_EQ(First().MaxY(), 40);
}

#if __has_include(<QTcpServer>)
TEST_F(OpenDatabaseTest, AServerThatDoesNotAnswerHoldsUpNobody) {
    if (!QSqlDatabase::isDriverAvailable(QStringLiteral("QPSQL")))
        GTEST_SKIP() << "libqt6sql6-psql is missing";
    QTcpServer silent;
    ASSERT_TRUE(silent.listen(QHostAddress::LocalHost));
    InChooser([port = silent.serverPort()](QDialog& dialog) {
        auto& stop = Control<QPushButton>(dialog, "btnStop");
        EXPECT_FALSE(stop.isVisible());
        bool wasShown = false;
        QTimer::singleShot(400, &dialog, [&] {
            wasShown = stop.isVisible();
            QTest::mouseClick(&stop, Qt::LeftButton);
        });
        Control<QComboBox>(dialog, "cbx_Connection")
            .setEditText(QStringLiteral("postgresql://me@127.0.0.1:%1/lab").arg(port));
        Control<QComboBox>(dialog, "cbx_Connection").lineEdit()->setFocus();
        QElapsedTimer clock;
        clock.start();
        QTest::keyClick(Control<QComboBox>(dialog, "cbx_Connection").lineEdit(), Qt::Key_Return);
        EXPECT_LT(clock.elapsed(), 4'000); // the server would never answer
        EXPECT_TRUE(wasShown);
        EXPECT_FALSE(stop.isVisible());
        EXPECT_TRUE(Control<QLabel>(dialog, "lblMessage").text().startsWith(QStringLiteral("Stopped")))
            << Control<QLabel>(dialog, "lblMessage").text().toStdString();
        QTest::keyClick(&dialog, Qt::Key_Escape);
    });
    Open(File());
    EXPECT_TRUE(Graph().Series().empty());
}
#endif

// The address goes into the connection's field, and from there into the window again.
TEST_F(OpenDatabaseTest, AServersAddressIsMadeOfItsParts) {
    struct TCase {
        int kind;
        const char *host, *port, *database, *user, *address;
    };
    const TCase cases[] = {
        {0, "127.0.0.1", "1", "lab", "me", "postgresql://me@127.0.0.1:1/lab"},
        {0, "", "1", "lab", "", "postgresql://localhost:1/lab"},
        {1, "::1", "1", "a b/c", "a@b:c", "mysql://a%40b%3Ac@[::1]:1/a%20b/c"},
        {2, "", "", "none such", "me", "odbc:DSN=none such;UID=me"},
        {2, "", "", "DRIVER=None;HOST=x", "", "odbc:DRIVER=None;HOST=x"},
    };
    for (const TCase& wanted : cases) {
        SCOPED_TRACE(wanted.address);
        InChooser([&wanted](QDialog& chooser) {
            WhenModal<QDialog>([&wanted](QDialog& dialog) {
                auto& connect = *Control<QDialogButtonBox>(dialog, "buttons").button(QDialogButtonBox::Ok);
                EXPECT_FALSE(connect.isEnabled());
                Control<QComboBox>(dialog, "cbx_Kind").setCurrentIndex(wanted.kind);
                Control<QLineEdit>(dialog, "e_Host").setText(QLatin1String(wanted.host));
                Control<QLineEdit>(dialog, "e_Port").setText(QLatin1String(wanted.port));
                Control<QLineEdit>(dialog, "e_User").setText(QLatin1String(wanted.user));
                Control<QLineEdit>(dialog, "e_Database").setText(QLatin1String(wanted.database));
                QTest::mouseClick(&connect, Qt::LeftButton);
            });
            Control<QComboBox>(chooser, "cbx_Connection").setEditText({});
            Click(chooser, "btnServer");
            EXPECT_EQ(Control<QComboBox>(chooser, "cbx_Connection").currentText().toStdString(),
                      wanted.address);
            EXPECT_FALSE(Control<QLabel>(chooser, "lblMessage").text().isEmpty());
            WhenModal<QDialog>([&wanted](QDialog& dialog) {
                EXPECT_EQ(Control<QComboBox>(dialog, "cbx_Kind").currentIndex(), wanted.kind);
                EXPECT_EQ(Control<QLineEdit>(dialog, "e_Database").text(), QLatin1String(wanted.database));
                EXPECT_EQ(Control<QLineEdit>(dialog, "e_User").text(), QLatin1String(wanted.user));
                QTest::keyClick(&dialog, Qt::Key_Escape);
            });
            Click(chooser, "btnServer");
            QTest::keyClick(&chooser, Qt::Key_Escape);
        });
        Open(File());
    }
}

TEST_F(OpenDatabaseTest, APasswordIsInNoFileAndInNoMessage) {
    const QByteArray secret = "hush77word";
    const QString url = QStringLiteral("postgresql://me:%1@127.0.0.1:1/lab").arg(QString::fromLatin1(secret));
    Window->StartRecovery(PathOf("state"), 1);
    InChooser([&](QDialog& dialog) {
        auto& connection = Control<QComboBox>(dialog, "cbx_Connection");
        connection.setEditText(url);
        QTest::keyClick(connection.lineEdit(), Qt::Key_Return);
        EXPECT_FALSE(Control<QLabel>(dialog, "lblMessage").text().contains(QString::fromLatin1(secret)));
        WhenModal<QInputDialog>([](QInputDialog& name) {
            name.setTextValue(QStringLiteral("the lab"));
            name.accept();
        });
        Control<QPushButton>(dialog, "btnSave").click();
        QTest::keyClick(&dialog, Qt::Key_Escape);
    });
    Open(File());
    Window->Document().Session().Change("source", [&] {
        TSeries& series = *Graph().FindSeries(Graph().AddSeries());
        series.DataSourceInfo().SetKind(TSourceKind::Database);
        TDatabaseWish wish;
        wish.connection = url.toStdString();
        series.DataSourceInfo().SetDatabase(wish);
        series.DataSourceInfo().SetSourceName("runs");
    });
    QDir state(PathOf("state"));
    EXPECT_TRUE(QTest::qWaitFor([&] {
        state.refresh();
        return !state.entryList({QStringLiteral("*.recovery")}).isEmpty();
    }));
    Control<QAction>(*Window, "a_LoadEveryRow").trigger();
    Window->Document().SaveTo(PathOf("saved.ltp"));
    int files = 0;
    for (QDirIterator all(Folder.path(), QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
         all.hasNext(); ++files) {
        const QString name = all.next();
        EXPECT_FALSE(Read(name).contains(secret)) << name.toStdString();
    }
    EXPECT_GT(files, 3);
    for (const std::string& text : Sink.Texts)
        EXPECT_EQ(text.find(secret.toStdString()), std::string::npos) << text;
}

TEST_F(OpenDatabaseTest, ErrorsAreChosenToo) {
    InChooser([](QDialog& dialog) {
        QTest::keyClick(&Control<QListWidget>(dialog, "lst_Tables"), Qt::Key_Down);
        auto& errors = Control<QComboBox>(dialog, "cbx_YError");
        errors.setCurrentIndex(errors.findData(QStringLiteral("t")));
        QTest::mouseClick(Control<QDialogButtonBox>(dialog, "buttons").button(QDialogButtonBox::Ok),
                          Qt::LeftButton);
    });
    Open(File());
    ASSERT_EQ(Graph().Series().size(), 1u);
    EXPECT_EQ(First().YErrors(), (std::vector<double>{1, 2}));
}

TEST_F(OpenDatabaseTest, CancelAddsNothing) {
    InChooser([](QDialog& dialog) { QTest::keyClick(&dialog, Qt::Key_Escape); });
    Open(File());
    EXPECT_TRUE(Graph().Series().empty());
    EXPECT_FALSE(Window->Document().IsModified());
}

} // namespace
} // namespace lumoplot
