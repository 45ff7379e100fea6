// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QObject>

namespace corvane {

/// Reports SIGTERM, SIGINT or SIGHUP, so that the program can shut down cleanly. A second such signal ends it
/// at once. Created once, after the application object.
class EndSignals final : public QObject {
    Q_OBJECT

public:
    explicit EndSignals(QObject *parent = nullptr);

Q_SIGNALS:
    void received();
};

} // namespace corvane
