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
        source.insertCategory(u"b"_s);
        CategoriesRegistry copy(source);
        source.insertCategory(u"a"_s);
        const CategoriesRegistry moved(std::move(source));
        QVERIFY(source.getCategories().isEmpty());
        QCOMPARE(copy.getCategories(), QList<QString>({u"b"_s}));
        copy = moved;
        source = std::move(copy);
        QVERIFY(copy.getCategories().isEmpty());
        QCOMPARE(source.getCategories() + moved.getCategories(), QList<QString>({u"b"_s, u"a"_s, u"b"_s, u"a"_s}));
    }

    void registrarEntersIntoItsRegistryOnly()
    {
        CategoriesRegistry registry;
        CategoriesRegistrar registrar(network, registry);
        registrar = CategoriesRegistrar(registrar);
        CategoriesRegistrySingleton() = CategoriesRegistrySingleton();
        registry.insertCategory(u"app.größe"_s); // not noticed as a repetition
        QCOMPARE(registry.getCategories(), QList<QString>({u"app.größe"_s, u"app.größe"_s}));
        QVERIFY(CategoriesRegistrySingleton::getInstance().getCategories().isEmpty());
        const CategoriesRegistrar second(network, CategoriesRegistrySingleton::getInstance());
        QCOMPARE(CategoriesRegistrySingleton::getInstance().getCategories(), QList<QString>({u"app.größe"_s}));
    }
};

QTEST_GUILESS_MAIN(CategoriesRegistryTest)
#include "tst_categoriesregistry.moc"
