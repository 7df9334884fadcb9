// Tests that the icon is one SVG file and that Qt renders it correctly at every size.

#include <QFile>
#include <QImageReader>
#include <QSet>
#include <QTest>
#include <QXmlStreamReader>

class tst_Icon : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void iconIsASquareSvg();
    void iconUsesOnlyBasicShapes();
    void iconIsRenderedAtEverySize_data();
    void iconIsRenderedAtEverySize();
};

void tst_Icon::iconIsASquareSvg()
{
    QFile file(QStringLiteral(ICON_FILE));
    QVERIFY(file.open(QIODevice::ReadOnly));
    QXmlStreamReader xml(&file);
    QVERIFY(xml.readNextStartElement());
    QCOMPARE(xml.name(), QLatin1String("svg"));
    QCOMPARE(xml.namespaceUri(), QLatin1String("http://www.w3.org/2000/svg"));
    QCOMPARE(xml.attributes().value(QLatin1String("viewBox")), QLatin1String("0 0 64 64"));
    while (!xml.atEnd()) {
        xml.readNext();
    }
    QVERIFY2(!xml.hasError(), qPrintable(xml.errorString()));
}

// Text would need fonts, and links would need other files. Some renderers do not support
// styles, clip paths and filters.
void tst_Icon::iconUsesOnlyBasicShapes()
{
    const QSet<QString> shapes{QStringLiteral("svg"), QStringLiteral("g"), QStringLiteral("path"),
                               QStringLiteral("rect"), QStringLiteral("circle")};
    QFile file(QStringLiteral(ICON_FILE));
    QVERIFY(file.open(QIODevice::ReadOnly));
    QXmlStreamReader xml(&file);
    int drawn = 0;
    while (!xml.atEnd()) {
        if (xml.readNext() != QXmlStreamReader::StartElement) {
            continue;
        }
        const QString name = xml.name().toString();
        QVERIFY2(shapes.contains(name), qPrintable(name));
        drawn += name == QLatin1String("svg") || name == QLatin1String("g") ? 0 : 1;
        const QXmlStreamAttributes attributes = xml.attributes();
        for (const QXmlStreamAttribute& attribute : attributes) {
            QVERIFY2(attribute.name() != QLatin1String("href") &&
                         !attribute.value().contains(QLatin1String("url(")),
                     qPrintable(attribute.value().toString()));
        }
    }
    QVERIFY2(!xml.hasError(), qPrintable(xml.errorString()));
    QVERIFY(drawn > 0);
}

void tst_Icon::iconIsRenderedAtEverySize_data()
{
    QTest::addColumn<int>("size");
    for (const int size : {16, 22, 32, 48, 256}) {
        QTest::addRow("%d pixels", size) << size;
    }
}

void tst_Icon::iconIsRenderedAtEverySize()
{
    QVERIFY2(QImageReader::supportedImageFormats().contains("svg"),
             "Qt's plugin for SVG is missing; ./test installs it");
    QFETCH(const int, size);
    QImageReader reader(QStringLiteral(ICON_FILE));
    reader.setScaledSize(QSize(size, size));
    const QImage image = reader.read();
    QVERIFY2(!image.isNull(), qPrintable(reader.errorString()));
    QCOMPARE(image.size(), QSize(size, size));

    // The icon's corners are round, so the corner pixel is transparent. The curve in the icon
    // is white. The map in the icon is blue at its top left and red at its bottom right.
    QVERIFY(image.pixelColor(0, 0).alpha() < 255);
    const auto at = [&](double x, double y) {
        return image.pixelColor(static_cast<int>(x * size), static_cast<int>(y * size));
    };
    QVERIFY(at(0.25, 0.79).lightness() > 200);
    QVERIFY(at(0.18, 0.18).blue() > at(0.18, 0.18).red() + 60);
    QVERIFY(at(0.85, 0.85).red() > at(0.85, 0.85).blue() + 60);
}

QTEST_GUILESS_MAIN(tst_Icon)
#include "tst_Icon.moc"
