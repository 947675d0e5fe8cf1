// What a list of documents needs of texts.

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

    // A title becomes the name of a file, and names are sorted as a person reads them.
    QStringList names{QStringLiteral("page 10"),
        StringUtility::stringToSafeFileName(QStringLiteral(" what? ")),
        QStringLiteral("page 9")};
    NaturalSort::sort(names);
    out << names.join(u',') << '\n';

    // Lists as sets. The order of a difference is open, so sort what is shown.
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
