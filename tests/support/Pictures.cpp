// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "tests/support/Pictures.h"

#include "Corvane/Look/Style.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QFont>
#include <QPalette>

using namespace Qt::StringLiterals;

namespace corvane::pictures {

void prepareEnvironment(int scaleFactor)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("QT_FONT_DPI", "96");
    qputenv("QT_SCALE_FACTOR", QByteArray::number(scaleFactor));
    qputenv("FONTCONFIG_FILE", QUILLET_TEST_FONTS);
}

void prepareApplication(Theme theme, double fontScale)
{
    QPalette palette = theme == Theme::light ? QPalette(QColor(u"#efefef"_s), QColor(u"#f4f4f4"_s))
                                             : QPalette(QColor(u"#3a3a3c"_s), QColor(u"#2a2a2c"_s));
    palette.setColor(QPalette::Highlight, QColor(u"#308cc6"_s));
    auto *style = new look::Style;
    QApplication::setStyle(style);
    style->polish(palette); // as the toolkit does with the desktop's palette
    QApplication::setPalette(palette);
    QFont font(u"DejaVu Sans"_s);
    font.setPointSizeF(10 * fontScale);
    QApplication::setFont(font);
    QApplication::setCursorFlashTime(0);
}

QString difference(const QImage &picture, const QString &name)
{
    const QString version = u"%1.%2"_s.arg(QT_VERSION_MAJOR).arg(QT_VERSION_MINOR);
    // A later version of Qt has its own reference only where it draws differently.
    const QString references = QStringLiteral(QUILLET_TEST_REFERENCES) + u"/%1/%2.png"_s;
    const QString own = references.arg(version, name);
    const QString reference = QFile::exists(own) ? own : references.arg(u"6.4"_s, name);
    const QImage wanted(reference);
    const QImage actual = picture.convertToFormat(QImage::Format_ARGB32);
    if (!wanted.isNull() && wanted.convertToFormat(QImage::Format_ARGB32) == actual) {
        return {};
    }
    const QString folder = QStringLiteral(QUILLET_TEST_PICTURES) + u'/' + version;
    QDir().mkpath(folder);
    QImage written = actual;
    written.setDevicePixelRatio(1);
    const QString path = folder + u'/' + name + u".png"_s;
    if (!written.save(path, "PNG", 0)) { // 0: strongest compression
        return u"the picture could not be written to %1"_s.arg(path);
    }
    return (wanted.isNull() ? u"there is no reference %1; the picture is %2"_s
                            : u"the picture differs from %1; it is %2"_s)
        .arg(reference, path);
}

} // namespace corvane::pictures
