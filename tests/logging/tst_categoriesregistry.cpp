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
    void storesNamesUnchanged()
    {
        CategoriesRegistry registry;
        const QList<QString> &live = registry.getCategories();
        const QList<QString> names = {u"b"_s, u" a\n"_s, u""_s, u"b"_s, u"B"_s};
        for (const QString &name : names) {
            registry.insertCategory(name);
        }
        QCOMPARE(live, names);
    }

    void copiesAreIndependentAndMovesEmptyTheSource()
    {
        CategoriesRegistry source;
        source.insertCategory(u"b"_s);
        CategoriesRegistry copy(source);
        source.insertCategory(u"a"_s);
        CategoriesRegistry moved(std::move(source));
        QCOMPARE(source.getCategories(), QList<QString>());
        QCOMPARE(copy.getCategories(), QList<QString>({u"b"_s}));
        QCOMPARE(moved.getCategories(), QList<QString>({u"b"_s, u"a"_s}));
        source.insertCategory(u"c"_s);
        copy = source;
        QCOMPARE(copy.getCategories(), QList<QString>({u"c"_s}));
        moved = std::move(copy);
        QCOMPARE(copy.getCategories(), QList<QString>());
        QCOMPARE(moved.getCategories(), QList<QString>({u"c"_s}));
    }

    void registrarUsesOnlyItsRegistry()
    {
        CategoriesRegistry registry;
        CategoriesRegistrar registrar(network, registry);
        registrar = CategoriesRegistrar(registrar);
        CategoriesRegistrySingleton() = CategoriesRegistrySingleton();
        QCOMPARE(registry.getCategories(), QList<QString>({u"app.größe"_s}));
        QCOMPARE(CategoriesRegistrySingleton::getInstance().getCategories(), QList<QString>());
        const CategoriesRegistrar second(network, CategoriesRegistrySingleton::getInstance());
        QCOMPARE(CategoriesRegistrySingleton::getInstance().getCategories(), QList<QString>({u"app.größe"_s}));
    }
};

QTEST_GUILESS_MAIN(CategoriesRegistryTest)
#include "tst_categoriesregistry.moc"
