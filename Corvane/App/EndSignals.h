// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QObject>

namespace corvane {

/// Ends the program in order when a session manager, a terminal or a person asks for it with a signal:
/// SIGTERM, SIGINT or SIGHUP. A second such signal ends it at once. Made once, after the application object.
class EndSignals final : public QObject {
    Q_OBJECT

public:
    explicit EndSignals(QObject *parent = nullptr);

Q_SIGNALS:
    void received();
};

} // namespace corvane
