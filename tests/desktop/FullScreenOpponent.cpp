// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

// A window as stubborn as a video call: full screen, above others, raised every 300 ms. It prints "ready"
// once it has the keyboard, and then each text typed into it on its own line.

#include <QApplication>
#include <QKeyEvent>
#include <QPainter>
#include <QTextStream>
#include <QTimer>
#include <QWidget>

namespace {

class Opponent : public QWidget {
protected:
    void keyPressEvent(QKeyEvent *event) override { print(event->text()); }

    void paintEvent(QPaintEvent * /*event*/) override
    {
        QPainter(this).fillRect(rect(), QColor(96, 64, 128));
    }

    void changeEvent(QEvent *event) override
    {
        if (event->type() == QEvent::ActivationChange && isActiveWindow() && !m_ready) {
            m_ready = true;
            print(QStringLiteral("ready"));
        }
    }

private:
    static void print(const QString &text) { QTextStream(stdout) << text << Qt::endl; }

    bool m_ready = false;
};

} // namespace

int main(int argc, char *argv[])
{
    QApplication application(argc, argv);
    Opponent opponent;
    opponent.setWindowFlag(Qt::WindowStaysOnTopHint);
    opponent.setWindowTitle(QStringLiteral("Opponent"));
    opponent.showFullScreen();
    opponent.activateWindow();
    QTimer raiser;
    QObject::connect(&raiser, &QTimer::timeout, &opponent, &QWidget::raise);
    raiser.start(300);
    return QApplication::exec();
}
