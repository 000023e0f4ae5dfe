#pragma once

#include <QTextEdit>

/// A text to be read that looks like a label: as high as its lines, without frame or scroll bars.
///
/// A text control because assistive technology then gets both its name and its text; a label with
/// an accessible name hides its text. Its text can be selected and copied.
class Lesefeld : public QTextEdit
{
public:
    explicit Lesefeld(QWidget *parent = nullptr);

    /// Shows \a text as plain text; a line break is CR LF or LF.
    void setText(const QString &text);

    bool hasHeightForWidth() const override { return true; }
    int heightForWidth(int width) const override;
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void changeEvent(QEvent *event) override;

private:
    void blendIn();
};
