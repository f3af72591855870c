// Tests the bundle's information list as the build writes it from its one template, and the entitlements.
#include <QFile>
#include <QFileInfo>
#include <QTest>
#include <QXmlStreamReader>

namespace {

// Reads one property-list value at the reader's current start element; an error is left in the reader.
QVariant readValue(QXmlStreamReader& xml)
{
    const auto element = xml.name();
    if (element == u"string") {
        return xml.readElementText();
    }
    if (element == u"true" || element == u"false") {
        const bool value = element == u"true";
        xml.skipCurrentElement();
        return value;
    }
    if (element == u"integer") {
        bool ok = false;
        const qlonglong value = xml.readElementText().toLongLong(&ok);
        if (!ok) {
            xml.raiseError(QStringLiteral("An integer that is not one"));
        }
        return value;
    }
    if (element == u"array") {
        QVariantList list;
        while (xml.readNextStartElement()) {
            list.append(readValue(xml));
        }
        return list;
    }
    if (element == u"dict") {
        QVariantMap map;
        while (xml.readNextStartElement()) {
            if (xml.name() != u"key") {
                xml.raiseError(QStringLiteral("A value without its key"));
                return {};
            }
            const QString key = xml.readElementText();
            if (!xml.readNextStartElement()) {
                xml.raiseError(QStringLiteral("A key without its value"));
                return {};
            }
            if (map.contains(key)) {
                xml.raiseError(QStringLiteral("The key %1 twice").arg(key));
            }
            map.insert(key, readValue(xml));
        }
        return map;
    }
    xml.raiseError(QStringLiteral("Unknown element %1").arg(element.toString()));
    return {};
}

// The top-level dictionary of a property list, or the reason it is not a well-formed one.
std::variant<QVariantMap, QString> parsePropertyList(const QByteArray& data)
{
    QXmlStreamReader xml(data);
    if (!xml.readNextStartElement() || xml.name() != u"plist" ||
        xml.attributes().value(QStringLiteral("version")) != u"1.0" || !xml.readNextStartElement() ||
        xml.name() != u"dict") {
        return xml.hasError() ? xml.errorString() : QStringLiteral("No plist with a dictionary");
    }
    const QVariantMap map = readValue(xml).toMap();
    xml.readNext();
    while (!xml.atEnd() && !xml.hasError()) {
        xml.readNext();
    }
    if (xml.hasError()) {
        return xml.errorString();
    }
    return map;
}

QVariantMap readPropertyList(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        qFatal("Cannot read %s", qPrintable(path));
    }
    auto parsed = parsePropertyList(file.readAll());
    if (const auto* error = std::get_if<QString>(&parsed)) {
        qFatal("%s is not a well-formed property list: %s", qPrintable(path), qPrintable(*error));
    }
    return std::get<QVariantMap>(parsed);
}

} // namespace

class InfoPlistTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void malformedListsAreTold()
    {
        QVERIFY(
            std::holds_alternative<QString>(parsePropertyList("<plist version=\"1.0\"><dict><key>A</key>")));
        QVERIFY(std::holds_alternative<QString>(
            parsePropertyList("<plist version=\"1.0\"><dict><string>no key</string></dict></plist>")));
        QVERIFY(std::holds_alternative<QString>(parsePropertyList(
            "<plist version=\"1.0\"><dict><key>A</key><true/><key>A</key><true/></dict></plist>")));
        QVERIFY(std::holds_alternative<QVariantMap>(
            parsePropertyList("<plist version=\"1.0\"><dict><key>A</key><true/></dict></plist>")));
    }

    void identityAndVersionsAreThisBuilds()
    {
        const QVariantMap info = readPropertyList(QStringLiteral(VENDEL_INFO_PLIST));
        QCOMPARE(info.value(QStringLiteral("CFBundleIdentifier")).toString(),
                 QStringLiteral(VENDEL_BUNDLE_IDENTIFIER));
        QCOMPARE(info.value(QStringLiteral("CFBundleName")).toString(), QStringLiteral(VENDEL_BUNDLE_NAME));
        QCOMPARE(info.value(QStringLiteral("CFBundleShortVersionString")).toString(),
                 QStringLiteral(VENDEL_BUNDLE_SHORT_VERSION));
        QCOMPARE(info.value(QStringLiteral("CFBundleVersion")).toString(),
                 QStringLiteral(VENDEL_BUNDLE_VERSION));
        QCOMPARE(info.value(QStringLiteral("NSHumanReadableCopyright")).toString(),
                 QStringLiteral(VENDEL_BUNDLE_COPYRIGHT));
        QCOMPARE(info.value(QStringLiteral("CFBundlePackageType")).toString(), QStringLiteral("APPL"));
        QCOMPARE(info.value(QStringLiteral("CFBundleExecutable")).toString(),
                 QStringLiteral("vendel-music-plugin"));
    }

    void launchUrlSchemeIsClaimed()
    {
        const QVariantMap info = readPropertyList(QStringLiteral(VENDEL_INFO_PLIST));
        const QVariantList types = info.value(QStringLiteral("CFBundleURLTypes")).toList();
        QCOMPARE(types.size(), 1);
        const QVariantMap type = types.first().toMap();
        QCOMPARE(type.value(QStringLiteral("CFBundleURLSchemes")).toList(),
                 QVariantList{QStringLiteral("vendelplugin")});
        QCOMPARE(type.value(QStringLiteral("CFBundleURLName")).toString(),
                 QStringLiteral(VENDEL_BUNDLE_IDENTIFIER));
    }

    void scriptingPermissionIsExplainedToTheUser()
    {
        const QVariantMap info = readPropertyList(QStringLiteral(VENDEL_INFO_PLIST));
        const QString usage = info.value(QStringLiteral("NSAppleEventsUsageDescription")).toString();
        QVERIFY(usage.contains(QStringLiteral(VENDEL_BUNDLE_NAME)));
        QVERIFY(usage.contains(QStringLiteral("Vendel")) && usage.contains(QStringLiteral("Music")));
    }

    void iconAndMinimumSystemArePresent()
    {
        const QVariantMap info = readPropertyList(QStringLiteral(VENDEL_INFO_PLIST));
        const QString icon = info.value(QStringLiteral("CFBundleIconFile")).toString();
        // The build renders the icon file from the drawing, under the drawing's name.
        QCOMPARE(icon,
                 QFileInfo(QStringLiteral(VENDEL_ICON_SOURCE)).completeBaseName() + QStringLiteral(".icns"));
        QVERIFY(QFileInfo::exists(QStringLiteral(VENDEL_ICON_SOURCE)));
        const QStringList minimum =
            info.value(QStringLiteral("LSMinimumSystemVersion")).toString().split(QLatin1Char('.'));
        QVERIFY(minimum.size() >= 2);
        QVERIFY(minimum.first().toInt() >= 11);
    }

    void everyShippedLanguageIsListedBesidesTheEnglishKeys()
    {
        const QVariantMap info = readPropertyList(QStringLiteral(VENDEL_INFO_PLIST));
        QCOMPARE(info.value(QStringLiteral("CFBundleDevelopmentRegion")).toString(), QStringLiteral("en"));
        const QStringList shipped = QStringLiteral(VENDEL_LANGUAGES).split(u' ', Qt::SkipEmptyParts);
        QVERIFY(shipped.contains(QStringLiteral("de")));
        QVERIFY(shipped.contains(QStringLiteral("fr")));
        QCOMPARE(info.value(QStringLiteral("CFBundleLocalizations")).toStringList(),
                 QStringList{QStringLiteral("en")} + shipped);
    }

    void musicLibraryAccessIsExplainedToTheUser()
    {
        const QVariantMap info = readPropertyList(QStringLiteral(VENDEL_INFO_PLIST));
        const QString usage = info.value(QStringLiteral("NSAppleMusicUsageDescription")).toString();
        QVERIFY(usage.contains(QStringLiteral(VENDEL_BUNDLE_NAME)));
        QVERIFY(usage.contains(QStringLiteral("playlists")));
    }

    void updaterSettingsComeFromTheBuild()
    {
        const QVariantMap info = readPropertyList(QStringLiteral(VENDEL_INFO_PLIST));
        QCOMPARE(info.value(QStringLiteral("SUFeedURL")).toString(), QStringLiteral(VENDEL_SPARKLE_FEED_URL));
        QVERIFY(info.value(QStringLiteral("SUFeedURL")).toString().startsWith(QStringLiteral("https://")));
        QCOMPARE(info.value(QStringLiteral("SUPublicEDKey")).toString(),
                 QStringLiteral(VENDEL_SPARKLE_PUBLIC_ED_KEY));
        // Always present, so that the updater never asks whether to check on its own.
        QCOMPARE(info.value(QStringLiteral("SUEnableAutomaticChecks")).typeId(), QMetaType::Bool);
        QCOMPARE(info.value(QStringLiteral("SUEnableAutomaticChecks")).toBool(),
                 VENDEL_SPARKLE_AUTOMATIC_CHECKS);
    }

    void entitlementsAllowSendingAppleEvents()
    {
        const QVariantMap entitlements = readPropertyList(QStringLiteral(VENDEL_ENTITLEMENTS));
        QCOMPARE(entitlements.value(QStringLiteral("com.apple.security.automation.apple-events")),
                 QVariant(true));
    }
};

QTEST_GUILESS_MAIN(InfoPlistTest)
#include "InfoPlistTest.moc"
