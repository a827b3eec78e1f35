#pragma once

#include <QHash>
#include <QSize>
#include <QString>
#include <QWidget>

class QLabel;
class QTextBrowser;

namespace orvo {

// A sample of a message as it will look: on a drawn cell phone ("CELL PHONE"), a post card
// ("POSTCARD") or a page (anything else). The text is merged with the sample values first.
class PreviewOverPicture : public QWidget {
    Q_OBJECT
public:
    explicit PreviewOverPicture(QWidget* parent = nullptr);

    void setTitle(const QString& title);
    QString title() const;
    void setCaption(const QString& caption);
    QString caption() const;
    void setPicture(const QString& picture);
    QString picture() const { return picture_; }
    void setSampleValues(const QHash<QString, QString>& values) { samples_ = values; }
    // Plain text is shown as typed; HTML as a page. The base folder resolves images.
    void setText(const QString& text, bool html, const QString& baseFolder = QString());
    // What the preview shows, merged.
    QString shownText() const { return shown_; }
    // The screen area the template asks for; an invalid dimension keeps the picture's own.
    void setScreenSize(const QSize& size);

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    QRect ScreenRect() const;

    QString picture_;
    QString shown_;
    QSize screen_{-1, -1};
    QHash<QString, QString> samples_;
    QLabel* title_;
    QLabel* caption_;
    QTextBrowser* browser_;
};

}  // namespace orvo
