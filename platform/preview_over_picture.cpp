#include "platform/preview_over_picture.h"

#include <QLabel>
#include <QPainter>
#include <QPainterPath>
#include <QTextBrowser>
#include <QUrl>

#include "platform/quick_editor.h"

namespace orvo {
namespace {

const QString kCellPhone = QStringLiteral("CELL PHONE");
const QString kPostCard = QStringLiteral("POSTCARD");
constexpr int kTitleHeight = 22;
constexpr int kCaptionHeight = 20;

}  // namespace

PreviewOverPicture::PreviewOverPicture(QWidget* parent)
    : QWidget(parent),
      title_(new QLabel(this)),
      caption_(new QLabel(this)),
      browser_(new QTextBrowser(this)) {
    title_->setObjectName(QStringLiteral("popTitle"));
    caption_->setObjectName(QStringLiteral("popCaption"));
    browser_->setObjectName(QStringLiteral("popText"));
    QFont bold = title_->font();
    bold.setBold(true);
    title_->setFont(bold);
    title_->setAlignment(Qt::AlignCenter);
    caption_->setAlignment(Qt::AlignCenter);
    browser_->setOpenLinks(false);
    browser_->setFrameShape(QFrame::NoFrame);
}

void PreviewOverPicture::setTitle(const QString& title) {
    title_->setText(title);
}
QString PreviewOverPicture::title() const {
    return title_->text();
}
void PreviewOverPicture::setCaption(const QString& caption) {
    caption_->setText(caption);
}
QString PreviewOverPicture::caption() const {
    return caption_->text();
}

void PreviewOverPicture::setPicture(const QString& picture) {
    picture_ = picture;
    updateGeometry();
    resizeEvent(nullptr);
    update();
}

void PreviewOverPicture::setText(const QString& text, bool html, const QString& baseFolder) {
    shown_ = MergeVariables(text, samples_);
    if (!baseFolder.isEmpty())
        browser_->setSearchPaths({baseFolder});
    if (html) {
        browser_->document()->setBaseUrl(QUrl::fromLocalFile(baseFolder));
        browser_->setHtml(shown_);
    } else {
        browser_->setPlainText(shown_);
    }
}

void PreviewOverPicture::setScreenSize(const QSize& size) {
    screen_ = size;
    updateGeometry();
    resizeEvent(nullptr);
}

QSize PreviewOverPicture::sizeHint() const {
    QSize screen = picture_ == kCellPhone  ? QSize(200, 300)
                   : picture_ == kPostCard ? QSize(360, 220)
                                           : QSize(420, 480);
    if (screen_.width() > 0)
        screen.setWidth(screen_.width());
    if (screen_.height() > 0)
        screen.setHeight(screen_.height());
    const int frame = picture_ == kCellPhone ? 24 : 12;
    const int bottom = picture_ == kCellPhone ? 60 : 12;
    return {screen.width() + 2 * frame,
            screen.height() + frame + bottom + kTitleHeight + kCaptionHeight};
}

QRect PreviewOverPicture::ScreenRect() const {
    const QRect body = rect().adjusted(0, kTitleHeight, 0, -kCaptionHeight);
    if (picture_ == kCellPhone)
        return body.adjusted(24, 48, -24, -60);
    return body.adjusted(16, 16, -16, -16);
}

void PreviewOverPicture::resizeEvent(QResizeEvent*) {
    title_->setGeometry(0, 0, width(), kTitleHeight);
    caption_->setGeometry(0, height() - kCaptionHeight, width(), kCaptionHeight);
    browser_->setGeometry(ScreenRect());
}

void PreviewOverPicture::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRect body = rect().adjusted(4, kTitleHeight, -4, -kCaptionHeight);
    const QRect screen = ScreenRect();
    if (picture_ == kCellPhone) {
        QPainterPath phone;
        phone.addRoundedRect(body, 28, 28);
        painter.fillPath(phone, QColor(0x2b, 0x2f, 0x36));
        painter.setPen(QPen(QColor(0x10, 0x10, 0x12), 2));
        painter.drawPath(phone);
        // Ear piece and home button.
        painter.setBrush(QColor(0x55, 0x5a, 0x63));
        painter.setPen(Qt::NoPen);
        painter.drawRoundedRect(QRect(body.center().x() - 24, body.top() + 20, 48, 6), 3, 3);
        painter.drawEllipse(QPoint(body.center().x(), body.bottom() - 30), 16, 16);
        painter.fillRect(screen.adjusted(-2, -2, 2, 2), QColor(0xe8, 0xee, 0xf4));
    } else if (picture_ == kPostCard) {
        painter.fillRect(body, QColor(0xf5, 0xec, 0xd7));
        painter.setPen(QPen(QColor(0xa0, 0x8c, 0x64), 1));
        painter.drawRect(body.adjusted(0, 0, -1, -1));
        // Stamp corner.
        painter.drawRect(QRect(body.right() - 52, body.top() + 8, 40, 48));
    } else {
        painter.fillRect(body.translated(4, 4), QColor(0, 0, 0, 40));
        painter.fillRect(body, Qt::white);
        painter.setPen(QPen(QColor(0xb0, 0xb0, 0xb0), 1));
        painter.drawRect(body.adjusted(0, 0, -1, -1));
    }
}

}  // namespace orvo
