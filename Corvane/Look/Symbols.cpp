// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Look/Symbols.h"

#include <QFile>
#include <QFontInfo>
#include <QGuiApplication>
#include <QIconEngine>
#include <QPainter>
#include <QSvgRenderer>

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

using namespace Qt::StringLiterals;

namespace corvane::look {

namespace {

/// The kind of drawing, which decides how the symbol becomes bold.
enum class Body {
    lines,
    solid,  ///< no cut-outs: bold changes nothing
    cutOut, ///< a solid shape with a sign cut out of it
};

struct Symbol {
    QStringView name;
    QStringView file;
    Body body;
};

constexpr std::array symbols{
    Symbol{.name = u"arrow.clockwise", .file = u"arrow-clockwise", .body = Body::lines},
    Symbol{.name = u"arrow.right.circle.fill", .file = u"arrow-right-circle-fill", .body = Body::cutOut},
    Symbol{.name = u"bell.badge", .file = u"bell-badge", .body = Body::lines},
    Symbol{.name = u"bell.badge.fill", .file = u"bell-badge-fill", .body = Body::solid},
    Symbol{.name = u"bell.fill", .file = u"bell-fill", .body = Body::solid},
    Symbol{.name = u"bolt.fill", .file = u"lightning-fill", .body = Body::solid},
    Symbol{.name = u"book", .file = u"book", .body = Body::lines},
    Symbol{.name = u"bubble.left.and.bubble.right.fill", .file = u"chat-left-fill", .body = Body::solid},
    Symbol{.name = u"calendar", .file = u"calendar3", .body = Body::lines},
    Symbol{.name = u"checkmark", .file = u"check2", .body = Body::lines},
    Symbol{.name = u"checkmark.circle.fill", .file = u"check-circle-fill", .body = Body::cutOut},
    Symbol{.name = u"checkmark.seal.fill", .file = u"patch-check-fill", .body = Body::cutOut},
    Symbol{.name = u"chevron.down", .file = u"chevron-down", .body = Body::lines},
    Symbol{.name = u"chevron.left", .file = u"chevron-left", .body = Body::lines},
    Symbol{.name = u"chevron.right", .file = u"chevron-right", .body = Body::lines},
    Symbol{.name = u"chevron.up", .file = u"chevron-up", .body = Body::lines},
    Symbol{.name = u"chevron.up.chevron.down", .file = u"chevron-expand", .body = Body::lines},
    Symbol{.name = u"clock.arrow.circlepath", .file = u"clock-history", .body = Body::lines},
    Symbol{.name = u"doc.on.clipboard", .file = u"clipboard", .body = Body::lines},
    Symbol{.name = u"doc.richtext", .file = u"file-earmark-richtext", .body = Body::lines},
    Symbol{.name = u"doc.text", .file = u"file-earmark-text", .body = Body::lines},
    Symbol{
        .name = u"exclamationmark.triangle.fill", .file = u"exclamation-triangle-fill", .body = Body::cutOut},
    Symbol{.name = u"g.circle.fill", .file = u"g-circle-fill", .body = Body::cutOut},
    Symbol{.name = u"gearshape.fill", .file = u"gear-fill", .body = Body::solid},
    Symbol{.name = u"globe.asia.australia.fill", .file = u"globe-asia-australia", .body = Body::solid},
    Symbol{.name = u"graduationcap.fill", .file = u"mortarboard-fill", .body = Body::solid},
    Symbol{.name = u"info.circle.fill", .file = u"info-circle-fill", .body = Body::cutOut},
    Symbol{.name = u"lock.shield.fill", .file = u"shield-lock-fill", .body = Body::cutOut},
    Symbol{.name = u"magnifyingglass", .file = u"search", .body = Body::lines},
    Symbol{.name = u"person.2.wave.2.fill", .file = u"people-fill", .body = Body::solid},
    Symbol{.name = u"person.crop.rectangle.stack.fill", .file = u"person-vcard-fill", .body = Body::cutOut},
    Symbol{.name = u"plus", .file = u"plus", .body = Body::lines},
    Symbol{.name = u"questionmark.circle", .file = u"question-circle", .body = Body::lines},
    Symbol{.name = u"questionmark.circle.fill", .file = u"question-circle-fill", .body = Body::cutOut},
    Symbol{.name = u"slider.horizontal.3", .file = u"sliders", .body = Body::lines},
    Symbol{.name = u"square.and.pencil", .file = u"pencil-square", .body = Body::lines},
    Symbol{.name = u"trash", .file = u"trash", .body = Body::lines},
    Symbol{.name = u"video.fill", .file = u"camera-video-fill", .body = Body::solid},
    Symbol{.name = u"wrench.and.screwdriver.fill", .file = u"tools", .body = Body::solid},
    Symbol{.name = u"xmark", .file = u"x-lg", .body = Body::lines},
    Symbol{.name = u"xmark.circle.fill", .file = u"x-circle-fill", .body = Body::cutOut},
};

/// In units of the set's drawings: the side of their square, and the stroke that bold adds to lines and to
/// the outlines of cut-outs.
constexpr double side = 16;
constexpr double boldLines = 0.9;
constexpr double boldCuts = 0.6;

const Symbol *find(const QString &name)
{
    const auto found = std::ranges::find(symbols, QStringView(name), &Symbol::name);
    return found != symbols.end() ? &*found : nullptr;
}

/// The symbol's SVG file in `color`, filled if `isFilled`, with outlines `strokeWidth` wide (in units of the
/// drawing).
QByteArray drawing(const Symbol *symbol, const QColor &color, bool isFilled, double strokeWidth)
{
    QFile file(symbol != nullptr ? u":/symbols/%1.svg"_s.arg(symbol->file) : QString());
    if (!file.open(QIODevice::ReadOnly)) {
        Q_ASSERT_X(false, "look", "there is no such symbol");
        return {};
    }
    const QByteArray name = color.name().toLatin1();
    const QByteArray opacity = QByteArray::number(color.alphaF());
    QByteArray paint = isFilled ? "fill=\"" + name + "\" fill-opacity=\"" + opacity + '"' : R"(fill="none")";
    if (strokeWidth > 0) {
        paint += " stroke=\"" + name + "\" stroke-opacity=\"" + opacity +
                 "\" stroke-linejoin=\"round\" stroke-width=\"" + QByteArray::number(strokeWidth) + '"';
    }
    return file.readAll().replace(R"(fill="currentColor")", paint);
}

void render(QPainter &painter, const QRectF &rect, const QByteArray &drawing)
{
    QSvgRenderer(drawing).render(&painter, rect);
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
        const int fitting = std::min(rect.width(), rect.height());
        m_renderer.render(painter, QRectF(rect.x() + (rect.width() - fitting) / 2.0,
                                          rect.y() + (rect.height() - fitting) / 2.0, fitting, fitting));
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

class InkEngine final : public QIconEngine {
public:
    InkEngine(QString name, Ink ink) : m_name(std::move(name)), m_ink(ink) {}

    void paint(QPainter *painter, const QRect &rect, QIcon::Mode mode, QIcon::State state) override
    {
        const Ink ink = mode == QIcon::Active ? Ink::primary : m_ink;
        SymbolEngine(drawing(find(m_name), color(ink, QGuiApplication::palette()), true, 0))
            .paint(painter, rect, mode, state);
    }

    QPixmap pixmap(const QSize &size, QIcon::Mode mode, QIcon::State state) override
    {
        QPixmap pixmap(size);
        pixmap.fill(Qt::transparent);
        QPainter painter(&pixmap);
        paint(&painter, QRect({}, size), mode, state);
        return pixmap;
    }

    [[nodiscard]] QIconEngine *clone() const override { return new InkEngine(m_name, m_ink); }

private:
    QString m_name;
    Ink m_ink;
};

} // namespace

int symbolSize(const QFont &font)
{
    return static_cast<int>(std::lround(QFontInfo(font).pixelSize() * control::symbolShare));
}

bool hasSymbol(const QString &name)
{
    return find(name) != nullptr;
}

QIcon symbolIcon(const QString &name, const QColor &color)
{
    return QIcon(new SymbolEngine(drawing(find(name), color, true, 0)));
}

QIcon symbolIcon(const QString &name, Ink ink)
{
    return QIcon(new InkEngine(name, ink));
}

QPixmap symbolPixmap(const QString &name, int size, const QColor &color, double devicePixelRatio,
                     SymbolWeight weight)
{
    const Symbol *symbol = find(name);
    const int pixels = static_cast<int>(std::ceil(size * devicePixelRatio));
    QPixmap pixmap(pixels, pixels);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    QRectF rect = pixmap.rect();
    if (weight == SymbolWeight::regular || symbol == nullptr || symbol->body == Body::solid) {
        render(painter, rect, drawing(symbol, color, true, 0));
    } else if (symbol->body == Body::lines) {
        render(painter, rect, drawing(symbol, color, true, boldLines));
    } else {
        // Erases a stroke along the outline, half of which lies inside: cut-outs grow, but the symbol
        // shrinks, so it is drawn larger by the same amount.
        const double more = pixels * boldCuts / (side - boldCuts) / 2;
        rect.adjust(-more, -more, more, more);
        render(painter, rect, drawing(symbol, color, true, 0));
        painter.setCompositionMode(QPainter::CompositionMode_DestinationOut);
        QPixmap outline(pixmap.size());
        outline.fill(Qt::transparent);
        QPainter outliner(&outline);
        render(outliner, rect, drawing(symbol, Qt::black, false, boldCuts));
        outliner.end();
        painter.drawPixmap(0, 0, outline);
    }
    painter.end();
    pixmap.setDevicePixelRatio(devicePixelRatio);
    return pixmap;
}

} // namespace corvane::look
