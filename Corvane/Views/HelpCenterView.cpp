// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Views/HelpCenterView.h"

#include "Corvane/Look/Accessible.h"
#include "Corvane/Look/Controls.h"
#include "Corvane/Look/Look.h"
#include "Corvane/Look/ScrollView.h"
#include "Corvane/Look/Stacks.h"
#include "Corvane/Look/Surfaces.h"
#include "Corvane/Look/SymbolView.h"
#include "Corvane/Look/Symbols.h"
#include "Corvane/Look/Text.h"
#include "Corvane/Views/HelpArticleView.h"
#include "Corvane/Views/UserManualPDF.h"

#include <QFontMetrics>
#include <QKeyEvent>
#include <QLineEdit>
#include <QListWidget>
#include <QMouseEvent>
#include <QPainter>
#include <QPushButton>
#include <QShortcut>
#include <QSplitter>
#include <QStackedLayout>
#include <QStyledItemDelegate>

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace corvane {

namespace {

using namespace look;

constexpr int topicRole = Qt::UserRole;

/// Paints a row of the list: the topic's symbol and its title, wrapped as needed.
class TopicRow final : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    /// The width that a row in `font` needs besides its text.
    static int widthBesideText(const QFont &font) { return symbolSize(font) + 3 * space::small; }

    [[nodiscard]] QSize sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const override
    {
        const int width = option.widget->width();
        const int textWidth = std::max(1, width - widthBesideText(option.font));
        const QRect text =
            QFontMetrics(option.font)
                .boundingRect(0, 0, textWidth, QWIDGETSIZE_MAX, Qt::TextWordWrap, index.data().toString());
        return {width, std::max(text.height(), symbolSize(option.font)) + 2 * control::verticalPadding};
    }

    void paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const override
    {
        painter->save();
        painter->setRenderHint(QPainter::Antialiasing);
        const bool isSelected = (option.state & QStyle::State_Selected) != 0;
        const bool isUnderMouse = (option.state & QStyle::State_MouseOver) != 0;
        if (isSelected || isUnderMouse) {
            painter->setPen(Qt::NoPen);
            painter->setBrush(isSelected ? accentGround(option.palette)
                                         : color(Ink::primary, option.palette, control::hoverOpacity));
            painter->drawRoundedRect(option.rect, control::cornerRadius, control::cornerRadius);
        }
        const int symbol = symbolSize(option.font);
        const int lineHeight = QFontMetrics(option.font).height();
        const QRect inside = option.rect.adjusted(space::small, control::verticalPadding, -space::small,
                                                  -control::verticalPadding);
        // Beside the title's first line.
        const QRect symbolArea(inside.left(), inside.top() + (lineHeight - symbol) / 2, symbol, symbol);
        const QRect textArea = inside.adjusted(symbol + space::small, 0, 0, 0);
        const HelpTopic topic = static_cast<HelpTopic>(index.data(topicRole).toInt());
        painter->drawPixmap(QStyle::visualRect(option.direction, option.rect, symbolArea),
                            symbolPixmap(symbolName(topic), symbol,
                                         color(isSelected ? Ink::onAccent : Ink::accent, option.palette),
                                         painter->device()->devicePixelRatioF()));
        painter->setFont(option.font);
        painter->setPen(color(isSelected ? Ink::onAccent : Ink::primary, option.palette));
        const Qt::Alignment alignment =
            Qt::AlignVCenter | QStyle::visualAlignment(option.direction, Qt::AlignLeft);
        painter->drawText(QStyle::visualRect(option.direction, option.rect, textArea),
                          static_cast<int>(alignment.toInt()) | Qt::TextWordWrap, index.data().toString());
        if ((option.state & QStyle::State_HasFocus) != 0) {
            if (isSelected) {
                paintFocusRingOnAccent(*painter, option.rect, control::cornerRadius, option.palette);
            } else {
                paintFocusRing(*painter, option.rect, control::cornerRadius, option.palette);
            }
        }
        painter->restore();
    }
};

/// The list of topics. A click below the last topic clears the selection.
class TopicList final : public QListWidget {
public:
    TopicList()
    {
        setAccessibleName(u"Help topics"_s);
        setFrameShape(QFrame::NoFrame);
        viewport()->setAutoFillBackground(false);
        viewport()->setAttribute(Qt::WA_Hover);
        setItemDelegate(new TopicRow(this));
        setResizeMode(QListView::Adjust);
        setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
        setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
        setSpacing(0);
    }

    /// The width for the longest title on one line (`isWhole`), or for the longest word.
    [[nodiscard]] int widthFor(bool isWhole) const
    {
        const QFontMetrics metrics(font());
        int widest = 0;
        for (const HelpTopic topic : allHelpTopics) {
            for (const QString &part : isWhole ? QStringList(title(topic)) : title(topic).split(u' ')) {
                widest = std::max(widest, metrics.horizontalAdvance(part));
            }
        }
        return widest + 1 + TopicRow::widthBesideText(font());
    }

    [[nodiscard]] QSize sizeHint() const override
    {
        return {widthFor(true), QListWidget::sizeHint().height()};
    }
    [[nodiscard]] QSize minimumSizeHint() const override
    {
        return {widthFor(false), 2 * QFontMetrics(font()).height()};
    }

protected:
    void mousePressEvent(QMouseEvent *event) override
    {
        if (!indexAt(event->pos()).isValid()) {
            setCurrentItem(nullptr);
            clearSelection();
        }
        QListWidget::mousePressEvent(event);
    }
};

QWidget *emptyState()
{
    auto *text = new Text(u"No matching help topic"_s, TextStyle::title, QFont::Bold);
    text->setAlignment(Qt::AlignCenter);
    text->setBalanced();
    auto *symbol = new SymbolView(u"magnifyingglass"_s, help::emptySymbolSize, Ink::secondary);
    auto *stack = column(space::medium, {Spacer{}, row(0, {Spacer{}, symbol, Spacer{}}), text, Spacer{}});
    auto *view = new QWidget;
    view->setLayout(padded({space::large, space::large, space::large, space::large}, stack));
    return view;
}

} // namespace

HelpCenterView::HelpCenterView(const UserManualPDF &manual, LinkOpener openLink, QWidget *parent)
    : QWidget(parent)
    , m_openLink(std::move(openLink))
    , m_search(searchField(u"Search help"_s))
    , m_list(new TopicList)
    , m_columns(new QSplitter)
    , m_detail(new QStackedLayout)
{
    // Without a description, a screen reader would repeat the prompt.
    m_search->setAccessibleDescription(u"Down goes to the topics found"_s);
    m_columns->setChildrenCollapsible(false);
    m_columns->setHandleWidth(1);
    m_columns->addWidget(sidebar());
    m_columns->addWidget(detail(manual));
    // The toolkit lists widgets added later first, and a screen reader follows that order.
    m_columns->widget(0)->lower();
    setLayout(row(0, {}));
    layout()->addWidget(m_columns);
    connect(m_columns, &QSplitter::splitterMoved, this, [this] { m_isDividedByUser = true; });

    connect(m_search, &QLineEdit::textChanged, this, &HelpCenterView::listTopics);
    m_search->installEventFilter(this);
    connect(m_list, &QListWidget::activated, m_list,
            [this](const QModelIndex &hit) { m_list->setCurrentIndex(hit); });
    connect(m_list, &QListWidget::itemSelectionChanged, this, [this] {
        if (m_isListing) {
            return;
        }
        const QList<QListWidgetItem *> selected = m_list->selectedItems();
        m_selection = selected.isEmpty()
                          ? std::nullopt
                          : std::optional(static_cast<HelpTopic>(selected.front()->data(topicRole).toInt()));
        showDetail();
    });
    auto *find = new QShortcut(QKeySequence::Find, this);
    connect(find, &QShortcut::activated, m_search, [this] {
        m_search->setFocus(Qt::ShortcutFocusReason);
        m_search->selectAll();
    });
    listTopics();
    showDetail();
    followDesktopFont(*this);
}

QString HelpCenterView::searchText() const
{
    return m_search->text();
}

QList<HelpTopic> HelpCenterView::visibleTopics() const
{
    return visibleHelpTopics(searchText(), locale());
}

QWidget *HelpCenterView::sidebar()
{
    constexpr int padding = help::sidebarPadding;
    auto *content = new QWidget;
    content->setLayout(
        padded({padding, padding, padding, padding},
               column(space::medium,
                      {heading(new Text(u"Quillet Help"_s, TextStyle::headline)), m_search, m_list})));
    return content;
}

QWidget *HelpCenterView::detail(const UserManualPDF &manual)
{
    auto *openManual = pushButton(u"Open PDF Manual"_s, Role::bordered, u"doc.richtext"_s);
    openManual->setToolTip(u"Open the printable Quillet User Manual"_s);
    connect(openManual, &QAbstractButton::clicked, this, [&manual] { manual.open(); });
    auto *toolbar = padded({space::medium, space::small, space::medium, space::small},
                           row(space::small, {Spacer{}, openManual}));
    return new Surface(0, cardColor, column(0, {toolbar, new Divider, m_detail}));
}

void HelpCenterView::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    divide();
}

void HelpCenterView::divide()
{
    if (m_isDividedByUser) {
        return;
    }
    // Titles on one line if that leaves the article enough room; never so narrow that a word is cut.
    const QWidget *sidebar = m_columns->widget(0);
    const int wanted = std::min(
        {sidebar->sizeHint().width(), help::sidebarWidth, static_cast<int>(width() * help::sidebarShare)});
    const int sidebarWidth = std::max(wanted, sidebar->minimumSizeHint().width());
    m_columns->setSizes({sidebarWidth, std::max(1, width() - sidebarWidth - m_columns->handleWidth())});
}

void HelpCenterView::listTopics()
{
    m_isListing = true;
    m_list->clear();
    for (const HelpTopic topic : visibleTopics()) {
        auto *item = new QListWidgetItem(title(topic), m_list);
        item->setData(topicRole, static_cast<int>(topic));
        if (topic == m_selection) {
            m_list->setCurrentItem(item);
        }
    }
    m_isListing = false;
}

bool HelpCenterView::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == m_search && event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent *>(event)->key();
        if (key == Qt::Key_Return || key == Qt::Key_Enter || key == Qt::Key_Down) {
            goToFirstHit();
            return true;
        }
    }
    return QWidget::eventFilter(watched, event);
}

void HelpCenterView::goToFirstHit()
{
    if (m_list->count() > 0) {
        // Made current without being selected: Return opens its article, Down moves on.
        m_list->setCurrentRow(0, QItemSelectionModel::NoUpdate);
        m_list->setFocus(Qt::TabFocusReason);
    }
}

void HelpCenterView::showDetail()
{
    while (QLayoutItem *shown = m_detail->takeAt(0)) {
        delete shown->widget();
        delete shown;
    }
    m_detail->addWidget(m_selection ? new HelpArticleView(*m_selection, m_openLink) : emptyState());
}

} // namespace corvane
