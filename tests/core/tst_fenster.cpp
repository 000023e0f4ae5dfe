// The Show members, through a service that only notes what it is asked.

#include "tests/core/support.h"
#include "tests/support/testregistry.h"

#include <memory>

using namespace coretest;

namespace {

class Service : public WindowService
{
public:
    struct Shown
    {
        QObject *form;
        bool modal;
        QObject *parent;
    };

    QObject *createAssistent(Kalibrierung &document) override
    {
        return make(u"frmAssistent"_qs, &document);
    }
    QObject *createInfo() override { return make(u"frmInfo"_qs, nullptr); }
    QObject *createCalcOptions(Kalibrierung &document) override
    {
        return make(u"frmCalcOptions"_qs, &document);
    }
    QObject *createProtocollExtraData(Kalibrierung &document) override
    {
        return make(u"frmProtocollExtraData"_qs, &document);
    }
    void showForm(QObject *form, bool modal, QObject *parentForm) override
    {
        log << u"show "_qs + form->objectName();
        shown.push_back({form, modal, parentForm});
        if (failing)
            throw RunTimeError(ErrorNumber::OutOfMemory);
    }

    QStringList log;
    std::vector<Shown> shown;
    Kalibrierung *handed = nullptr;
    bool failing = false;

private:
    QObject *make(const QString &name, Kalibrierung *document)
    {
        log << u"create "_qs + name;
        handed = document;
        forms.push_back(std::make_unique<QObject>());
        forms.back()->setObjectName(name);
        return forms.back().get();
    }

    std::vector<std::unique_ptr<QObject>> forms;
};

struct ShowMember
{
    const char *form;
    void (Kalibrierung::*show)(bool, QObject *);
    bool takesDocument;
};

const ShowMember members[] = {
    {"frmAssistent", &Kalibrierung::ShowAssistent, true},
    {"frmInfo", &Kalibrierung::ShowInfo, false},
    {"frmCalcOptions", &Kalibrierung::ShowCalcOptions, true},
    {"frmProtocollExtraData", &Kalibrierung::ShowProtocollExtraData, true},
};

} // namespace

class TestFenster : public QObject
{
    Q_OBJECT

private slots:
    void createsHandsOverAndShows_data();
    void createsHandsOverAndShows();
    void everyCallMakesANewWindow();
    void eventLiesBetweenCreatingAndShowing();
    void aHandlerMayPutAnotherWindowInItsPlace();
    void onlyTheWizardRaisesTheEvent();
    void withoutAServiceNothingCanBeShown_data();
    void withoutAServiceNothingCanBeShown();
    void failuresOfTheServiceReachTheCaller();
};

void TestFenster::createsHandsOverAndShows_data()
{
    QTest::addColumn<int>("member");
    QTest::addColumn<bool>("modal");
    QTest::addColumn<bool>("owned");
    for (int member = 0; member < 4; ++member) {
        for (const bool modal : {false, true}) {
            for (const bool owned : {false, true})
                QTest::addRow("%s %s %s", members[member].form, modal ? "modal" : "modeless",
                              owned ? "owned" : "without an owner")
                    << member << modal << owned;
        }
    }
}

void TestFenster::createsHandsOverAndShows()
{
    QFETCH(const int, member);
    QFETCH(const bool, modal);
    QFETCH(const bool, owned);
    const ShowMember &tested = members[member];
    Service service;
    Kalibrierung document(german, &service);
    QObject owner;
    (document.*tested.show)(modal, owned ? &owner : nullptr);
    const QString form = QString::fromLatin1(tested.form);
    QCOMPARE(service.log, QStringList({u"create "_qs + form, u"show "_qs + form}));
    QCOMPARE(service.handed, tested.takesDocument ? &document : nullptr);
    QCOMPARE(service.shown[0].modal, modal);
    QCOMPARE(service.shown[0].parent, owned ? &owner : nullptr);
}

void TestFenster::everyCallMakesANewWindow()
{
    Service service;
    Kalibrierung document(german, &service);
    document.ShowInfo(); // both arguments left out: modeless and without an owner
    document.ShowInfo();
    QVERIFY(service.shown[0].form != service.shown[1].form);
    QVERIFY(!service.shown[0].modal);
    QVERIFY(service.shown[0].parent == nullptr);
}

void TestFenster::eventLiesBetweenCreatingAndShowing()
{
    Service service;
    Kalibrierung document(german, &service);
    connect(&document, &Kalibrierung::BeforeShowAssistent, this, [&](QObject *&form) {
        service.log << u"event for "_qs + form->objectName();
        QCOMPARE(service.handed, &document); // it works on the document already
    });
    document.ShowAssistent();
    QCOMPARE(service.log, QStringList({u"create frmAssistent"_qs, u"event for frmAssistent"_qs,
                                       u"show frmAssistent"_qs}));
    // Both arguments left out, as at the start of the program: modeless, without an owner.
    QVERIFY(!service.shown[0].modal);
    QVERIFY(service.shown[0].parent == nullptr);
}

void TestFenster::aHandlerMayPutAnotherWindowInItsPlace()
{
    Service service;
    Kalibrierung document(german, &service);
    QObject other;
    other.setObjectName(u"another wizard"_qs);
    QObject owner;
    connect(&document, &Kalibrierung::BeforeShowAssistent, this,
            [&](QObject *&form) { form = &other; });
    document.ShowAssistent(true, &owner);
    QCOMPARE(service.shown.size(), std::size_t{1});
    QCOMPARE(service.shown[0].form, &other);
    QVERIFY(service.shown[0].modal);
    QCOMPARE(service.shown[0].parent, &owner);
}

void TestFenster::onlyTheWizardRaisesTheEvent()
{
    Service service;
    Kalibrierung document(german, &service);
    int raised = 0;
    connect(&document, &Kalibrierung::BeforeShowAssistent, this, [&](QObject *&) { ++raised; });
    document.ShowInfo();
    document.ShowCalcOptions();
    document.ShowProtocollExtraData();
    QCOMPARE(raised, 0);
    document.ShowAssistent();
    QCOMPARE(raised, 1);
}

void TestFenster::withoutAServiceNothingCanBeShown_data()
{
    QTest::addColumn<int>("member");
    for (int member = 0; member < 4; ++member)
        QTest::newRow(members[member].form) << member;
}

void TestFenster::withoutAServiceNothingCanBeShown()
{
    QFETCH(const int, member);
    Kalibrierung document(german);
    int raised = 0;
    connect(&document, &Kalibrierung::BeforeShowAssistent, this, [&](QObject *&) { ++raised; });
    QCOMPARE(errorOf([&] { (document.*members[member].show)(false, nullptr); }), 5);
    QCOMPARE(raised, 0);
}

void TestFenster::failuresOfTheServiceReachTheCaller()
{
    Service service;
    service.failing = true;
    Kalibrierung document(german, &service);
    QCOMPARE(errorOf([&] { document.ShowCalcOptions(true); }), 7);
}

REGISTER_TEST(TestFenster)
#include "tst_fenster.moc"
