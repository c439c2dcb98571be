#pragma once

#include <QLabel>

namespace fw {

// A one-line heading that may be narrower than its text: it shows the beginning and the end with
// "…" between them, and the whole text in its tooltip. It never asks its layout for more room
// than a few characters, so the buttons beside it keep theirs.
class ElidedLabel : public QLabel
{
    Q_OBJECT

public:
    explicit ElidedLabel(const QString &text = {}, QWidget *parent = nullptr);

    void setFullText(const QString &text);
    QString fullText() const { return m_fullText; }

    QSize minimumSizeHint() const override;

protected:
    void resizeEvent(QResizeEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    void elide();

    QString m_fullText;
};

} // namespace fw
