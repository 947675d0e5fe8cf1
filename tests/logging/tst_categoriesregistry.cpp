#include <logging/CategoriesRegistry.h>

#include <QLoggingCategory>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace logging;

Q_LOGGING_CATEGORY(network, "app.größe")

class CategoriesRegistryTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void copiesAreIndependentAndMovesLeaveNothing()
    {
        CategoriesRegistry source;
        const QList<QString> &live = source.getCategories();
        source.insertCategory(u"b"_s);
        CategoriesRegistry copy(source);
        source.insertCategory(u"a"_s);
        source.insertCategory(u"b"_s);
        copy.insertCategory(u"c"_s);
        QCOMPARE(live, QList<QString>({u"b"_s, u"a"_s, u"b"_s}));
        QCOMPARE(copy.getCategories(), QList<QString>({u"b"_s, u"c"_s}));

        copy = source;
        QCOMPARE(copy.getCategories(), live);
        copy = std::move(source);
        QVERIFY(live.isEmpty());
        const CategoriesRegistry moved(std::move(copy));
        copy.insertCategory(u"d"_s);
        QCOMPARE(copy.getCategories(), QList<QString>({u"d"_s}));
        QCOMPARE(moved.getCategories(), QList<QString>({u"b"_s, u"a"_s, u"b"_s}));
    }

    void registrarEntersIntoItsRegistryOnly()
    {
        CategoriesRegistry registry;
        CategoriesRegistrar registrar(network, registry);
        registrar = CategoriesRegistrar(registrar);
        CategoriesRegistrySingleton() = CategoriesRegistrySingleton();
        QCOMPARE(registry.getCategories(), QList<QString>({u"app.größe"_s}));
        QVERIFY(CategoriesRegistrySingleton::getInstance().getCategories().isEmpty());
        const CategoriesRegistrar second(network, CategoriesRegistrySingleton::getInstance());
        QCOMPARE(CategoriesRegistrySingleton::getInstance().getCategories(), registry.getCategories());
    }
};

QTEST_GUILESS_MAIN(CategoriesRegistryTest)
#include "tst_categoriesregistry.moc"
