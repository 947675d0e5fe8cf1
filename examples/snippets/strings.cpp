// Names, lists and versions as an application with a list of documents handles them.

//! [example]
#include <strings/NaturalSort.h>
#include <strings/QEnumToString.h>
#include <strings/StringListOperations.h>
#include <strings/StringUtility.h>
#include <strings/Translation.h>

#include <QLocale>
#include <QTextStream>

#include <algorithm>

int main()
{
    QLocale::setDefault(QLocale(QLocale::English));
    QTextStream out(stdout);

    // A title becomes the name of a file. Numbers within names are compared as numbers.
    QStringList names{QStringLiteral("page 10"),
        StringUtility::stringToSafeFileName(QStringLiteral(" what? ")),
        QStringLiteral("page 9")};
    NaturalSort::sort(names);
    out << names.join(u',') << '\n';

    // The order of a difference is unspecified; sort it before it is shown.
    QStringList missing = StringListOperations::subtract(names, {QStringLiteral("page 9"), QStringLiteral("what_")});
    out << missing.join(u',') << '\n';

    QString firstName;
    QString lastName;
    StringUtility::patientNameToFirstLastName(QStringLiteral("ada LOVELACE-king"), firstName, lastName);
    out << StringUtility::makeFirstCharacterOfPartsUpperCase({firstName, lastName}) << " ("
        << StringUtility::getPatientInitials(firstName, lastName) << ")\n";

    const auto saved = StringUtility::saveableUIStringToMap(QStringLiteral("core 1.2.3 | ui 2.0"));
    out << (saved.hasValue() ? saved.getValue().value(QStringLiteral("ui")).toString() : QString()) << '\n';

    out << QEnumToString::qFileDeviceError(QFileDevice::ReadError) << '\n';
    out << strings::tr("StatusBar", QStringLiteral("no translator is installed")) << '\n';
}
//! [example]
