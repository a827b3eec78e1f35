#include "tools/city_state_zip.h"

#include <QAbstractButton>
#include <QFocusEvent>
#include <QKeyEvent>
#include <QLineEdit>
#include <QScopedValueRollback>
#include <algorithm>

#include "platform/leaving.h"
#include "platform/prompts.h"
#include "tools/tools_tables.h"
#include "tools/zip_code_panel.h"

namespace orvo::tools {
namespace {

// Room for a whole typed line in the city or zip field.
constexpr int kEntryWidth = 120;

bool IsListKey(int key) {
    switch (key) {
        case Qt::Key_Up:
        case Qt::Key_Down:
        case Qt::Key_PageUp:
        case Qt::Key_PageDown:
        case Qt::Key_Return:
        case Qt::Key_Enter:
        case Qt::Key_Escape:
            return true;
        default:
            return false;
    }
}

}  // namespace

CityStateZip::CityStateZip(GIC& gic, component::EditingDialog& screen)
    : QObject(&screen), gic_(gic), screen_(screen) {}

CityStateZip::~CityStateZip() {
    // The panel belongs to the window; without its driver it has no use.
    delete panel_.data();
}

void CityStateZip::Attach(QLineEdit* city, QLineEdit* state, QLineEdit* zip,
                          QAbstractButton* cityButton, QAbstractButton* zipButton) {
    city_ = city;
    state_ = state;
    zip_ = zip;
    cityIdentity_ = city;
    zipIdentity_ = zip;
    onRecord_ = Current();
    const std::array<std::pair<QLineEdit*, QString ZipParts::*>, 3> parts{
        {{city, &ZipParts::city}, {state, &ZipParts::state}, {zip, &ZipParts::zip}}};
    for (const auto& [field, part] : parts) {
        if (!field)
            continue;
        connect(field, &QLineEdit::textChanged, this,
                [this, field, part] { OnTextChanged(field, part); });
    }
    for (const ZipMode mode : {ZipMode::City, ZipMode::Zip}) {
        QLineEdit* field = Field(mode);
        if (!field)
            continue;
        field->installEventFilter(this);
        connect(field, &QLineEdit::textEdited, this,
                [this, mode](const QString& text) { OnTextEdited(mode, text); });
        screen_.OnLeave(field, [this, mode] { LeaveStep(mode); });
        // A line such as "99501 Anchorage, AK" is longer than the zip it leaves behind.
        const int stored = mode == ZipMode::City ? kZipCityWidth : kZipCodeWidth;
        widths_[Slot(mode)] = std::min(field->maxLength(), stored);
        field->setMaxLength(kEntryWidth);
    }
    screen_.AddCheck([this] { return CheckWidths(); });
    if (cityButton) {
        connect(cityButton, &QAbstractButton::clicked, this,
                [this] { RunZipAction([this] { Lookup(ZipMode::City); }); });
    }
    if (zipButton) {
        connect(zipButton, &QAbstractButton::clicked, this,
                [this] { RunZipAction([this] { Lookup(ZipMode::Zip); }); });
    }
}

void CityStateZip::SetRecordHasAddress(std::function<bool()> test) {
    recordHasAddress_ = std::move(test);
}

void CityStateZip::SetVisibleRows(int rows) {
    wantedRows_ = rows;
    if (panel_)
        panel_->SetWantedRows(rows);
}

void CityStateZip::Lookup(ZipMode mode) {
    QLineEdit* field = Field(mode);
    if (!field || field->isReadOnly() || !field->isEnabled())
        return;
    Search(mode, field->text());
}

void CityStateZip::HidePanel() {
    if (panel_)
        panel_->HideZipPanel();
}

ZipParts CityStateZip::Current() const {
    const auto text = [](const QLineEdit* field) {
        return field ? field->text().trimmed() : QString();
    };
    return {text(city_), text(state_), text(zip_)};
}

bool CityStateZip::eventFilter(QObject* watched, QEvent* event) {
    if (watched != cityIdentity_ && watched != zipIdentity_)
        return QObject::eventFilter(watched, event);
    const ZipMode mode = watched == cityIdentity_ ? ZipMode::City : ZipMode::Zip;
    switch (event->type()) {
        case QEvent::FocusOut:
            if (IsLeaving(*static_cast<QFocusEvent*>(event)))
                OnLeft(mode);
            return false;
        case QEvent::ShortcutOverride:
        case QEvent::KeyPress: {
            auto* key = static_cast<QKeyEvent*>(event);
            if ((key->modifiers() & ~Qt::KeypadModifier) != Qt::NoModifier)
                return false;
            const bool listKey =
                IsListKey(key->key()) && panel_ && panel_->isVisible() && panel_->tag() == mode;
            if (event->type() == QEvent::ShortcutOverride) {
                // Ours before any shortcut of the window.
                if (key->key() == Qt::Key_F9 || listKey)
                    event->accept();
                return false;
            }
            if (key->key() == Qt::Key_F9) {
                RunZipAction([this, mode] { Lookup(mode); });
                return true;
            }
            return listKey && OnKey(key->key());
        }
        default:
            return false;
    }
}

QLineEdit* CityStateZip::Field(ZipMode mode) const {
    return mode == ZipMode::City ? city_.data() : zip_.data();
}

void CityStateZip::OnTextChanged(const QLineEdit* field, QString ZipParts::*part) {
    // setText clears a field's modified mark, typing sets it: only the screen's own writes
    // (loading a record) say what the record holds. A screen that tidies up what was typed in
    // the city or zip is still showing the person's text.
    if (writing_ || field->isModified())
        return;
    if ((field == city_ && Edited(ZipMode::City)) || (field == zip_ && Edited(ZipMode::Zip)))
        return;
    onRecord_.*part = field->text().trimmed();
}

ZipCode_Panel& CityStateZip::Panel() {
    if (!panel_) {
        panel_ = new ZipCode_Panel(gic_, city_ ? city_->window() : zip_->window());
        if (wantedRows_ > 0)
            panel_->SetWantedRows(wantedRows_);
        connect(panel_, &ZipCode_Panel::rowChosen, this, [this](const ZipRow& row) {
            Edited(panel_->tag()) = false;
            Apply(row);
        });
    }
    return *panel_;
}

void CityStateZip::ShowPanel(ZipMode mode) {
    QLineEdit* field = Field(mode);
    ZipCode_Panel& panel = Panel();
    if (!panel.isVisible() || panel.tag() != mode || panel.field() != field)
        panel.ShowZipPanel(field->window(), field, mode);
}

void CityStateZip::Search(ZipMode mode, const QString& text) {
    ShowPanel(mode);
    if (!RunZipAction([this, &text] { panel_->SearchZip(text); }))
        HidePanel();
}

void CityStateZip::OnTextEdited(ZipMode mode, const QString& text) {
    Edited(mode) = true;
    typed_[Slot(mode)] = text;
    Search(mode, text);
}

bool CityStateZip::OnKey(int key) {
    ZipCode_Panel& panel = *panel_;
    switch (key) {
        case Qt::Key_Up:
            panel.MoveSelection(-1);
            return true;
        case Qt::Key_Down:
            panel.MoveSelection(1);
            return true;
        case Qt::Key_PageUp:
            panel.MoveSelection(-panel.visibleRows());
            return true;
        case Qt::Key_PageDown:
            panel.MoveSelection(panel.visibleRows());
            return true;
        case Qt::Key_Escape:
            panel.HideZipPanel();
            return true;
        default:
            break;
    }
    // Enter chooses the selected row; with none, the list closes and the screen has the key.
    if (!panel.currentRow()) {
        panel.HideZipPanel();
        return false;
    }
    RunZipAction([&panel] { panel.Choose(); });
    return true;
}

void CityStateZip::OnLeft(ZipMode mode) {
    if (panel_ && panel_->tag() == mode)
        panel_->HideZipPanel();
}

// What leaving the field does, run by the screen once the focus has moved on, or before a save.
// It reads the text as typed: the screen's own steps on the field may have tidied it since, and
// a "STOP" key or the entry the Add question shows are the person's own words.
void CityStateZip::LeaveStep(ZipMode mode) {
    QLineEdit* field = Field(mode);
    if (!field || !Edited(mode))
        return;
    Edited(mode) = false;
    const QString entry = typed_[Slot(mode)].trimmed();
    if (!entry.isEmpty())
        Leave(mode, entry);
}

bool CityStateZip::CheckWidths() const {
    for (const ZipMode mode : {ZipMode::City, ZipMode::Zip}) {
        QLineEdit* field = Field(mode);
        const int width = widths_[Slot(mode)];
        if (!field || field->text().trimmed().size() <= width)
            continue;
        const QString what =
            mode == ZipMode::City ? QStringLiteral("The city") : QStringLiteral("The zip code");
        prompts().Message(
            QStringLiteral("%1 can hold no more than %2 characters.").arg(what).arg(width),
            Buttons::Ok, Icon::Warning, screen_.windowTitle());
        field->setFocus();
        return false;
    }
    return true;
}

void CityStateZip::Leave(ZipMode mode, const QString& entry) {
    const ZipParts parts = SplitZipEntry(gic_, mode, entry);
    if (const std::optional<ZipRow> row = MatchZipParts(gic_, mode, parts)) {
        // A city alone leaves the state and zip as they are; a whole line, or a zip, is the
        // row it names.
        if (mode == ZipMode::Zip || !parts.state.isEmpty() || !parts.zip.isEmpty())
            Apply(*row);
        return;
    }
    // The start of a name or a zip that the list holds is a key being typed, not a new place.
    if (IsStopKey(entry) || tools::SearchZip(gic_, mode, entry, 1).selected == 0)
        return;
    const int id = AddZipCode(gic_, mode, entry);
    if (id == 0)
        return;
    if (const std::optional<ZipRow> row = ReadZipRow(gic_, mode, id))
        Apply(*row);
}

void CityStateZip::Apply(const ZipRow& row) {
    HidePanel();
    // A row without a city or state (a zip added on its own) leaves what the person typed there.
    const ZipParts current = Current();
    ZipParts chosen = row.parts;
    for (QString ZipParts::*part : {&ZipParts::city, &ZipParts::state, &ZipParts::zip}) {
        if ((chosen.*part).isEmpty())
            chosen.*part = current.*part;
    }
    const bool hasAddress = recordHasAddress_ ? recordHasAddress_() : !onRecord_.isEmpty();
    if (!ConfirmZipUpdate(hasAddress, onRecord_, chosen)) {
        Write(onRecord_);
        return;
    }
    Write(chosen);
    emit addressChosen(chosen);
}

void CityStateZip::Write(const ZipParts& parts) {
    const QScopedValueRollback<bool> writing(writing_, true);
    if (city_)
        city_->setText(parts.city);
    if (state_)
        state_->setText(parts.state);
    if (zip_)
        zip_->setText(parts.zip);
}

}  // namespace orvo::tools
