// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Views/HelpTopic.h"
#include "Corvane/Views/LinkOpener.h"
#include "Corvane/Views/UserManualPDF.h"

#include <QWidget>

#include <optional>

class QLineEdit;
class QListWidget;
class QSplitter;
class QStackedLayout;

namespace corvane {

/// The content of the help window: the topics that match the search, and the article of the selected topic.
class HelpCenterView final : public QWidget {
    Q_OBJECT

public:
    /// Starts with an empty search and the welcome article. `manual` is borrowed and outlives the view.
    /// `openLink` opens web and mailto links.
    HelpCenterView(const UserManualPDF &manual, LinkOpener openLink, QWidget *parent = nullptr);

    [[nodiscard]] QString searchText() const;
    [[nodiscard]] QList<HelpTopic> visibleTopics() const;

    /// The topic whose article is shown; none once the user has deselected it. A search does not change it,
    /// even if the topic does not match.
    [[nodiscard]] std::optional<HelpTopic> selection() const { return m_selection; }

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    [[nodiscard]] QWidget *sidebar();
    [[nodiscard]] QWidget *detail(const UserManualPDF &manual);
    void divide();
    void listTopics();
    void goToFirstHit();
    void showDetail();

    LinkOpener m_openLink;
    std::optional<HelpTopic> m_selection = HelpTopic::welcome;
    QLineEdit *m_search;
    QListWidget *m_list;
    QSplitter *m_columns;
    QStackedLayout *m_detail;
    bool m_isListing = false;
    bool m_isDividedByUser = false;
};

} // namespace corvane
