// A program that is killed loses at most the last interval, and what it left is offered, never just loaded.
#include "host/window_fixture.h"

#include <QDateTime>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QProcess>
#include <random>

namespace lumoplot {
namespace {

using TFinalAct = std::function<void(QDialog&)>;

class HostRecovery : public TWindowTest {
protected:
    HostRecovery() {
        Open(Write("run.csv", "1,10\n2,20\n3,5\n4,12\n"));
        Window->Document().SaveTo(PathOf("run.ltp"));
        Saved = Content();
    }

    QString State() const { return PathOf("state"); }
    QStringList Files(const char* filter = "host-*.recovery") const {
        return QDir(State()).entryList({QString::fromLatin1(filter)}, QDir::Files);
    }
    void Retitle(const char* title) {
        Window->Document().Session().Change("title", [&] { Graph().Appearance()->SetGraphTitle(title); });
    }
    /// Changes the title, and leaves what a crash would; the window then has the saved graph again.
    void CrashWithTitle(const char* title) {
        Window->StartRecovery(State(), 1);
        Retitle(title);
        ASSERT_TRUE(QTest::qWaitFor([this] { return Files().size() == 1; }));
        const QString own = Files()[0];
        ASSERT_TRUE(QFile::copy(QDir(State()).filePath(own), QDir(State()).filePath(Left)));
        Window = std::make_unique<TMainWindow>(PathOf("templates"));
        ASSERT_FALSE(QFile::exists(QDir(State()).filePath(own))) << "the normal end removes it";
        Window->show();
    }
    /// What the program does at its start, with what the user does in the dialog.
    bool StartAgain(TFinalAct act) {
        WhenModal<QDialog>(act);
        return Window->StartRecovery(State(), 1);
    }
    static QString Details(QDialog& dialog) {
        return Control<QPlainTextEdit>(dialog, "m_Details").toPlainText();
    }

    const QString Left = QStringLiteral("host-1-left.recovery");
    TBytes Saved;
};

TEST_F(HostRecovery, WhatACrashLeftIsShownAndGoesOnWhenTheUserWantsIt) {
    CrashWithTitle("Not saved");
    const bool recovered = StartAgain([&](QDialog& dialog) {
        EXPECT_EQ(Graph().Appearance()->GraphTitle(), "") << "nothing is loaded without asking";
        for (const QString& part : {QDir::toNativeSeparators(PathOf("run.ltp")),
                                    QStringLiteral("1 step, last: title"), QStringLiteral("run (4 points)")})
            EXPECT_TRUE(Details(dialog).contains(part)) << Details(dialog).toStdString();
        EXPECT_FALSE(Control<QLabel>(dialog, "lblPicture").pixmap().isNull());
        Click(dialog, "btnRecover");
    });
    EXPECT_TRUE(recovered);
    EXPECT_EQ(Graph().Appearance()->GraphTitle(), "Not saved");
    EXPECT_EQ(Window->Document().FileName(), PathOf("run.ltp"));
    EXPECT_TRUE(Window->isWindowModified());
    EXPECT_TRUE(QTest::qWaitFor([this] { return Files().size() == 1 && Files()[0] != Left; }))
        << "what was left is kept until it is kept anew";
    Press(Qt::Key_Z);
    EXPECT_EQ(Content(), Saved);
    EXPECT_FALSE(Window->isWindowModified());
}

TEST_F(HostRecovery, WhatIsNotWantedGoesAndWhatIsPutOffStays) {
    CrashWithTitle("Not saved");
    const TBytes before = Content();
    EXPECT_FALSE(StartAgain([](QDialog& dialog) { Click(dialog, "btnLater"); }));
    EXPECT_EQ(Files(), QStringList(Left));
    Sink.Answer = false;
    EXPECT_FALSE(StartAgain([&](QDialog& dialog) {
        Click(dialog, "btnDiscard");
        EXPECT_EQ(Files(), QStringList(Left)) << "asked again, the user said No";
        Sink.Answer = true;
        Click(dialog, "btnDiscard");
    }));
    EXPECT_EQ(Files(), QStringList());
    EXPECT_EQ(Content(), before);
    EXPECT_FALSE(Window->StartRecovery(State(), 1)) << "nothing to ask about";
}

TEST_F(HostRecovery, ADamagedFileIsToldAndStaysUntilTheUserDecides) {
    CrashWithTitle("Not saved");
    const QByteArray good = Read(QDir(State()).filePath(Left));
    ASSERT_GT(good.size(), 100);
    QFile::remove(QDir(State()).filePath(Left));
    Write("state/host-2-cut.recovery", good.left(good.size() / 2));
    Write("state/host-3-empty.recovery", "");
    const TBytes before = Content();
    EXPECT_FALSE(StartAgain([&](QDialog& dialog) {
        EXPECT_EQ(Control<QListWidget>(dialog, "lst_Sessions").count(), 2);
        EXPECT_FALSE(Control<QPushButton>(dialog, "btnRecover").isEnabled());
        EXPECT_TRUE(Details(dialog).contains(QDir::toNativeSeparators(State())))
            << Details(dialog).toStdString();
        Click(dialog, "btnSetAside");
        EXPECT_FALSE(Control<QPushButton>(dialog, "btnRecover").isEnabled());
        Click(dialog, "btnLater");
    }));
    EXPECT_EQ(Files().size(), 1);
    EXPECT_EQ(Files("*.aside").size(), 1);
    EXPECT_EQ(Content(), before);
}

// The graph that an editor worked on may never come back: the program offers what it left.
TEST_F(HostRecovery, WhatTheDataEditorLeftIsOfferedAtTheStart) {
    struct TRows : TSideState {
        std::size_t BytesBeside(const TSideState*) const override { return 1; }
        TBytes ToBytes(const TGraphSnapshot&) const override { return {1, 2, 3}; }
    };
    for (const bool hasRows : {false, true}) {
        SCOPED_TRACE(hasRows);
        Sink.Texts.clear();
        QDir().mkpath(State());
        {
            TxyGraph edited;
            edited.CopyFrom(Graph());
            TGraphSession session(edited);
            const TSideStatePtr rows = hasRows ? std::make_shared<TRows>() : nullptr;
            session.SetSide({[rows] { return rows; }, {}});
            session.Start();
            const QString kind = RecoveryKind(edited, "look.ltp");
            TRecoveryWriter writer(session, {.Kind = kind, .DocumentName = "look.ltp", .Folder = State()});
            session.Change("title", [&] { edited.Appearance()->SetGraphTitle("In the editor"); });
            writer.Flush();
            const QString own = Files("editor*.recovery").value(0);
            QFile::copy(QDir(State()).filePath(own), QDir(State()).filePath(kind + "-1-left.recovery"));
        }
        ASSERT_EQ(Files("editor*.recovery").size(), 1);
        EXPECT_TRUE(StartAgain([&](QDialog& dialog) {
            EXPECT_TRUE(Details(dialog).contains(QStringLiteral("data editor")))
                << Details(dialog).toStdString();
            Click(dialog, "btnRecover");
        }));
        EXPECT_EQ(Graph().Appearance()->GraphTitle(), "In the editor");
        EXPECT_EQ(First().Count(), 4);
        EXPECT_EQ(Window->Document().FileName(), "") << "the editor's document is a template";
        EXPECT_TRUE(Window->isWindowModified());
        EXPECT_TRUE(QTest::qWaitFor([&] { return Files("editor*.recovery").size() == (hasRows ? 1 : 0); }));
        EXPECT_EQ(Sink.Texts.size(), hasRows ? 1u : 0u);
        const QString next = RecoveryKind(Graph(), Window->Document().TemplateName().toStdString());
        EXPECT_EQ(FindLeftSessions(State(), {next}).size(), hasRows ? 1u : 0u) << "for the editor";
        Window = std::make_unique<TMainWindow>(PathOf("templates"));
        Window->show();
        Window->OpenFiles({PathOf("run.ltp")});
    }
}

TEST_F(HostRecovery, AFileThatIsGoneIsWrittenAgainBySaving) {
    CrashWithTitle("Not saved");
    QFile::remove(PathOf("run.ltp"));
    EXPECT_TRUE(StartAgain([](QDialog& dialog) { Click(dialog, "btnRecover"); }));
    EXPECT_EQ(First().Count(), 4);
    EXPECT_TRUE(Window->isWindowModified());
    Press(Qt::Key_S);
    EXPECT_TRUE(QFile::exists(PathOf("run.ltp")));
}

TEST_F(HostRecovery, ThatNothingCanBeKeptIsShownAsLongAsItIsSo) {
    Write("state", "a file where the folder should be");
    Window->StartRecovery(State(), 1);
    Retitle("Not saved");
    const auto& notice = Control<QLabel>(*Window, "l_Notice");
    EXPECT_TRUE(QTest::qWaitFor(
        [&] { return notice.text().startsWith(QStringLiteral("Unsaved changes are not kept: ")); }));
    QFile::remove(State());
    Retitle("Kept now");
    EXPECT_TRUE(QTest::qWaitFor([&] { return notice.text().isEmpty(); }));
}

// Killed at random moments. More kills, the interval (ms) and the number of points by the environment, as
// docs/recovery.md says.

int FromEnvironment(const char* name, int usual) {
    return qEnvironmentVariableIsSet(name) ? qEnvironmentVariableIntValue(name) : usual;
}

int Interval() {
    return FromEnvironment("LUMOPLOT_KILL_INTERVAL", 40);
}

double ValueOf(int step) {
    return step * 0.5 - 7;
}

/// The program that is killed: a window whose graph gets a point a step, told on standard output.
TEST(HostRecoveryVictim, DISABLED_Runs) {
    const QString folder = qEnvironmentVariable("LUMOPLOT_VICTIM");
    QSettings::setDefaultFormat(QSettings::IniFormat);
    QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, folder);
    TMainWindow window(folder + QStringLiteral("/templates"));
    window.show();
    window.StartRecovery(folder + QStringLiteral("/state"), Interval());
    TSeries& ballast = *window.Graph().FindSeries(window.Graph().AddSeries());
    ballast.SetActive(false);
    for (int i = 0; i < FromEnvironment("LUMOPLOT_KILL_POINTS", 20000); ++i) ballast.AddPoint(i, i);
    const int number = window.Graph().AddSeries();
    window.Document().SaveTo(folder + QStringLiteral("/driven.ltp"));
    QTimer driver;
    int step = 0;
    QObject::connect(&driver, &QTimer::timeout, [&] {
        ++step;
        window.Document().Session().Change("point " + std::to_string(step), [&] {
            window.Graph().FindSeries(number)->AddPoint(step, ValueOf(step));
        });
        std::printf("%d %lld\n", step, static_cast<long long>(QDateTime::currentMSecsSinceEpoch()));
        std::fflush(stdout);
    });
    driver.start(2);
    QApplication::exec();
}

struct TKilled {
    QByteArray Output;
    qint64 TimeOfKill = 0;
};

TKilled RunAndKill(const QString& folder, int killAfterMs) {
    QProcess victim;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("LUMOPLOT_VICTIM"), folder);
    victim.setProcessEnvironment(environment);
    victim.start(QCoreApplication::applicationFilePath(),
                 {QStringLiteral("--gtest_filter=HostRecoveryVictim.*"),
                  QStringLiteral("--gtest_also_run_disabled_tests"), QStringLiteral("--gtest_brief=1")});
    const QDir state(folder + QStringLiteral("/state"));
    EXPECT_TRUE(QTest::qWaitFor(
        [&] { return !state.entryList({QStringLiteral("*.recovery")}, QDir::Files).isEmpty(); }, 60000));
    QTest::qWait(killAfterMs);
    victim.kill();
    const qint64 time = QDateTime::currentMSecsSinceEpoch();
    EXPECT_TRUE(victim.waitForFinished());
    return {victim.readAllStandardOutput(), time};
}

/// How long before the kill the first step was made that is lost; 0 when none is.
qint64 LostMs(const TKilled& killed, int stepsKept) {
    for (const QByteArray& line : killed.Output.split('\n')) {
        const QList<QByteArray> parts = line.split(' ');
        if (parts.size() == 2 && parts[0].toInt() == stepsKept + 1)
            return killed.TimeOfKill - parts[1].toLongLong();
    }
    return 0;
}

TEST_F(HostRecovery, AProgramThatIsKilledLosesLittle) {
    std::mt19937 random(std::random_device{}());
    std::uniform_int_distribution moment(0, 3 * Interval());
    qint64 mostLost = 0;
    const int kills = FromEnvironment("LUMOPLOT_KILLS", 5);
    for (int i = 0; i < kills; ++i) {
        QTemporaryDir place;
        const int killAfterMs = moment(random);
        const TKilled killed = RunAndKill(place.path(), killAfterMs);
        Window = std::make_unique<TMainWindow>(PathOf("templates"));
        Window->show();
        WhenModal<QDialog>([](QDialog& dialog) { Click(dialog, "btnRecover"); });
        ASSERT_TRUE(Window->StartRecovery(place.filePath(QStringLiteral("state")), 1)) << killAfterMs;
        ASSERT_EQ(Graph().Series().size(), 2u);
        const TSeries& series = *Graph().Series()[1];
        ASSERT_GT(series.Count(), 0);
        int step = 0;
        for (auto point = series.First(); point; point = point.Next()) {
            ++step;
            ASSERT_EQ(point.X(), step);
            ASSERT_EQ(point.Y(), ValueOf(step));
        }
        const qint64 lost = LostMs(killed, step);
        mostLost = std::max(mostLost, lost);
        std::printf("killed %d ms after the first file: %d steps kept, %lld ms lost\n", killAfterMs, step,
                    static_cast<long long>(lost));
        Window = nullptr;
        EXPECT_TRUE(QDir(place.filePath(QStringLiteral("state"))).entryList(QDir::Files).isEmpty())
            << "nothing is left behind";
    }
    std::printf("%d kills with an interval of %d ms: at most %lld ms lost\n", kills, Interval(),
                static_cast<long long>(mostLost));
}

} // namespace
} // namespace lumoplot
