// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Look/Symbols.h"

#include <QFile>
#include <QIconEngine>
#include <QPainter>
#include <QSvgRenderer>

#include <array>
#include <cmath>

using namespace Qt::StringLiterals;

namespace corvane::look {

namespace {

struct Symbol {
    const char16_t *name;
    const char16_t *file;
};

constexpr std::array symbols{
    Symbol{u"arrow.right.circle.fill", u"arrow-right-circle-fill"},
    Symbol{u"bell.fill", u"bell-fill"},
    Symbol{u"checkmark.circle.fill", u"check-circle-fill"},
    Symbol{u"exclamationmark.triangle.fill", u"exclamation-triangle-fill"},
    Symbol{u"xmark", u"x-lg"},
};

QString fileOf(const QString &name)
{
    for (const Symbol &symbol : symbols) {
        if (name == QStringView(symbol.name)) {
            return u":/symbols/%1.svg"_s.arg(QStringView(symbol.file));
        }
    }
    return {};
}

/// The drawing of a symbol with its colour and weight written into it.
QByteArray drawing(const QString &name, const QColor &color, SymbolWeight weight)
{
    QFile file(fileOf(name));
    const bool isThere = file.open(QIODevice::ReadOnly);
    Q_ASSERT_X(isThere, "look::symbol", qPrintable(name));
    if (!isThere) {
        return {};
    }
    // The set draws on a field of 16 by 16; one more unit about each line is its bold.
    QByteArray paint =
        "fill=\"" + color.name().toLatin1() + "\" fill-opacity=\"" + QByteArray::number(color.alphaF()) + '"';
    if (weight == SymbolWeight::bold) {
        paint += " stroke=\"" + color.name().toLatin1() + "\" stroke-opacity=\"" +
                 QByteArray::number(color.alphaF()) + "\" stroke-width=\"0.9\" stroke-linejoin=\"round\"";
    }
    return file.readAll().replace("fill=\"currentColor\"", paint);
}

class SymbolEngine final : public QIconEngine {
public:
    explicit SymbolEngine(QByteArray drawing) : m_drawing(std::move(drawing)), m_renderer(m_drawing) {}

    void paint(QPainter *painter, const QRect &rect, QIcon::Mode mode, QIcon::State) override
    {
        painter->save();
        if (mode == QIcon::Disabled) {
            painter->setOpacity(painter->opacity() * 0.4);
        }
        const int side = std::min(rect.width(), rect.height());
        m_renderer.render(painter, QRectF(rect.x() + (rect.width() - side) / 2.0,
                                          rect.y() + (rect.height() - side) / 2.0, side, side));
        painter->restore();
    }

    QPixmap pixmap(const QSize &size, QIcon::Mode mode, QIcon::State state) override
    {
        QPixmap pixmap(size);
        pixmap.fill(Qt::transparent);
        QPainter painter(&pixmap);
        paint(&painter, QRect({}, size), mode, state);
        return pixmap;
    }

    [[nodiscard]] QIconEngine *clone() const override { return new SymbolEngine(m_drawing); }

private:
    QByteArray m_drawing;
    QSvgRenderer m_renderer;
};

} // namespace

bool hasSymbol(const QString &name)
{
    return !fileOf(name).isEmpty();
}

QIcon symbolIcon(const QString &name, const QColor &color, SymbolWeight weight)
{
    return QIcon(new SymbolEngine(drawing(name, color, weight)));
}

QPixmap symbolPixmap(const QString &name, int size, const QColor &color, double devicePixelRatio,
                     SymbolWeight weight)
{
    QSvgRenderer renderer(drawing(name, color, weight));
    const int side = static_cast<int>(std::ceil(size * devicePixelRatio));
    QPixmap pixmap(side, side);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    renderer.render(&painter, QRectF(0, 0, side, side));
    painter.end();
    pixmap.setDevicePixelRatio(devicePixelRatio);
    return pixmap;
}

} // namespace corvane::look
