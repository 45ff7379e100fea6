// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Views/FloatingBannerView.h"

#include "Corvane/Look/Accessible.h"
#include "Corvane/Look/LineLabel.h"
#include "Corvane/Look/Look.h"
#include "Corvane/Look/Stacks.h"
#include "Corvane/Look/Symbols.h"
#include "Corvane/Notifications/BannerContent.h"
#include "Corvane/Utilities/Spawn.h"

#include <QAbstractButton>
#include <QPainter>
#include <QStringList>

#include <utility>

using namespace Qt::StringLiterals;

namespace corvane {

namespace {

void drawSymbol(QPainter &painter, const QRect &area, const QString &name, int size, const QColor &color)
{
    const QPixmap symbol = look::symbolPixmap(name, size, color, painter.device()->devicePixelRatioF(),
                                              look::SymbolWeight::bold);
    painter.drawPixmap(
        QPointF(area.x() + (area.width() - size) / 2.0, area.y() + (area.height() - size) / 2.0), symbol);
}

/// The action's symbol on the action's colour.
class IconView final : public QWidget {
public:
    explicit IconView(const TeachingAction &action) : m_symbol(bannerContent::symbolName(action))
    {
        const bannerContent::AccentColor accent = bannerContent::accentColor(action);
        m_background = QColor::fromRgbF(static_cast<float>(accent.red), static_cast<float>(accent.green),
                                        static_cast<float>(accent.blue));
        setFixedSize(look::banner::iconArea, look::banner::iconArea);
    }

protected:
    void paintEvent(QPaintEvent *) override
    {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(Qt::NoPen);
        painter.setBrush(m_background);
        painter.drawRoundedRect(rect(), look::banner::iconRadius, look::banner::iconRadius);
        drawSymbol(painter, rect(), m_symbol, look::banner::iconSize, look::white(1));
    }

private:
    QString m_symbol;
    QColor m_background;
};

class CloseButton final : public QAbstractButton {
public:
    CloseButton()
    {
        setFixedSize(look::banner::closeArea, look::banner::closeArea);
        setFocusPolicy(Qt::NoFocus); // the card never takes the keyboard focus
        setAttribute(Qt::WA_Hover);
        const QString purpose = u"Close reminder"_s;
        setAccessibleName(purpose);
        look::setAccessibleRole(*this, QAccessible::Button);
        setToolTip(purpose);
    }

protected:
    void paintEvent(QPaintEvent *) override
    {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(Qt::NoPen);
        painter.setBrush(look::white(isDown() ? 0.32 : underMouse() ? 0.22 : 0.12));
        painter.drawEllipse(rect());
        drawSymbol(painter, rect(), u"xmark"_s, look::banner::closeSize, look::white(0.9));
    }
};

} // namespace

FloatingBannerView::FloatingBannerView(const TeachingAction &action, std::function<void()> onDismiss,
                                       QWidget *parent)
    : QWidget(parent)
    , m_action(action)
    , m_onDismiss(std::move(onDismiss))
    , m_title(new look::LineLabel(look::font(look::banner::titleSize, QFont::ExtraBold), look::white(1),
                                  look::banner::titleShrinks))
    , m_student(new look::LineLabel(look::font(look::banner::studentSize, QFont::DemiBold), look::white(0.92),
                                    look::banner::studentShrinks))
    , m_information(new look::LineLabel(look::font(look::banner::informationSize, QFont::Medium),
                                        look::white(0.74), look::banner::informationShrinks))
{
    using namespace look;
    setFixedSize(banner::width, banner::height);
    setAnnounced(*this);
    setAttribute(Qt::WA_TranslucentBackground); // for the rounded corners

    auto *close = new CloseButton;
    connect(close, &QAbstractButton::clicked, this, [this] {
        if (m_onDismiss) {
            m_onDismiss();
        }
    });

    auto *texts = column(banner::lineSpacing, {Spacer{}, m_title, m_student, m_information, Spacer{}});
    auto *contents = padded({banner::leadingPadding, 0, banner::trailingPadding, 0},
                            row(banner::iconSpacing, {new IconView(action), texts}));
    auto *corner =
        padded({banner::closePadding, banner::closePadding, banner::closePadding, banner::closePadding},
               row(0, {close}));
    setLayout(overlay(contents, corner, Qt::AlignTop | Qt::AlignRight));
    updateTexts();
}

void FloatingBannerView::updateTexts()
{
    const Date now = currentDate();
    m_title->setLine(bannerContent::title(m_action, now));
    m_student->setLine(bannerContent::studentLine(m_action));
    m_information->setLine(bannerContent::informationLine(m_action, now));
    // A screen reader says this when the banner appears.
    setAccessibleName(QStringList{m_title->text(), m_student->text(), m_information->text()}.join(u". "_s));
}

void FloatingBannerView::paintEvent(QPaintEvent *)
{
    using namespace look;
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(black(0.92));
    painter.drawRoundedRect(QRectF(rect()), banner::cornerRadius, banner::cornerRadius);
    constexpr double inset = banner::strokeWidth / 2;
    painter.setPen(QPen(white(0.16), banner::strokeWidth));
    painter.setBrush(Qt::NoBrush);
    painter.drawRoundedRect(QRectF(rect()).adjusted(inset, inset, -inset, -inset),
                            banner::cornerRadius - inset, banner::cornerRadius - inset);
}

QCoro::Task<void> FloatingBannerView::followClock(QPointer<FloatingBannerView> view, std::uint64_t showing)
{
    while (view && view->m_showing == showing) {
        view->updateTexts();
        co_await wait(Seconds{1});
    }
}

void FloatingBannerView::showEvent(QShowEvent *event)
{
    QWidget::showEvent(event);
    look::announceShown(*this, accessibleName());
    // The task ends at its first tick after the view is hidden or destroyed.
    spawn(followClock(this, ++m_showing));
}

void FloatingBannerView::hideEvent(QHideEvent *event)
{
    QWidget::hideEvent(event);
    ++m_showing;
}

} // namespace corvane
