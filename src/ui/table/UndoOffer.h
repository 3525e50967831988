#pragma once

#include <QWidget>

class ElidedLabel;
class QTimer;
class LinkButton;

/// Says for eight seconds what an edit has done, with a link that takes it back. It stays while the link has
/// the keyboard or the pointer, so that it does not go away below them.
class UndoOffer : public QWidget {
    Q_OBJECT

public:
    explicit UndoOffer(QWidget* parent = nullptr);

    /// Shows itself; an empty text hides it.
    void offer(const QString& done);

signals:
    void undoRequested();
    void shown(bool isShown);
    /// It is hidden while the link has the keyboard, which needs another place.
    void keyboardReleased();

private:
    void end();
    void endUnlessUsed();

    ElidedLabel* m_text;
    LinkButton* m_link;
    QTimer* m_time;
};
