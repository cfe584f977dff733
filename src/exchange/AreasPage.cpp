#include "exchange/AreasPage.h"

#include "controls/Captions.h"
#include "controls/DataTable.h"
#include "exchange/ChoiceTableModel.h"
#include "session/Messages.h"

#include <QCheckBox>
#include <QFormLayout>
#include <QLineEdit>

#include <algorithm>

namespace tessaro {

namespace {

// The first choices of every area; the nearest ones follow.
enum FirstChoice { kStays, kLeftOut, kNearest };

} // namespace

AreasPage::AreasPage(QWidget* parent) : QWidget(parent) {
    auto* outer = new QVBoxLayout(this);
    outer->setContentsMargins(24, 16, 24, 16);
    outer->setSpacing(12);
    table_ = new DataTable(this);
    table_->setObjectName(QStringLiteral("grdAreas"));
    table_->setAccessibleName(PlainText(QStringLiteral("TS_ReportAreas")));
    table_->SetHint(GetText(QStringLiteral("TS_AreasAllFound")));
    areas_ = new ChoiceTableModel(this);
    table_->setModel(areas_);
    table_->setItemDelegate(new ChoiceDelegate(table_));
    table_->setEditTriggers(QAbstractItemView::AllEditTriggers);
    table_->SetColumnWishes({{.text = 300, .weight = 2}, {.text = 100}, {.text = 300, .weight = 2, .takesRest = true}});
    outer->addWidget(table_, 1);
    chkMake_ = new QCheckBox(this);
    chkMake_->setObjectName(QStringLiteral("chkMakeAreas"));
    SetCaption(chkMake_, QStringLiteral("TS_AreasMake"));
    outer->addWidget(chkMake_);
    auto* form = new QFormLayout;
    txtParent_ = new QLineEdit(this);
    txtParent_->setObjectName(QStringLiteral("txtParentArea"));
    txtParent_->setAccessibleName(PlainText(QStringLiteral("TS_AreasParent")));
    form->addRow(PlainText(QStringLiteral("TS_AreasParent")), txtParent_);
    outer->addLayout(form);
    connect(chkMake_, &QCheckBox::toggled, txtParent_, &QWidget::setEnabled);
}

void AreasPage::ShowCheck(const CheckedImport& checked) {
    unknown_ = checked.unknownAreas;
    std::vector<ChoiceRow> rows;
    for (const UnknownArea& area : unknown_)
        rows.push_back({{area.text, QLocale::system().toString(static_cast<qlonglong>(area.values))},
                        QStringList{PlainText(area.isShared ? QStringLiteral("TS_RefusedShared")
                                                            : QStringLiteral("TS_AreasStays")),
                                    PlainText(QStringLiteral("TS_RoleLeftOut"))} +
                            area.nearest,
                        kStays});
    areas_->Show({PlainText(QStringLiteral("TS_AreasInFile")), PlainText(QStringLiteral("TS_ReportValues")),
                  PlainText(QStringLiteral("TS_AreasIs"))},
                 std::move(rows));
    const qsizetype made = checked.Additions().areas.size();
    table_->SetHint(made == 0 ? GetText(QStringLiteral("TS_AreasAllFound"))
                              : FilledText(QStringLiteral("TS_CountMade"), {CaptionOf(Role::AreaName)}) +
                                    QStringLiteral(": ") + QLocale::system().toString(qlonglong{made}));
    chkMake_->setChecked(checked.draft.makesAreas);
    txtParent_->setEnabled(checked.draft.makesAreas);
    txtParent_->setText(checked.draft.parentArea);
}

void AreasPage::TakeInto(ImportDraft& draft) const {
    draft.makesAreas = chkMake_->isChecked();
    draft.parentArea = txtParent_->text().trimmed();
    const std::vector<ChoiceRow>& rows = areas_->Rows();
    for (std::size_t i = 0; i < std::min(rows.size(), unknown_.size()); ++i) {
        if (rows[i].chosen == kStays) continue;
        const QString id =
            rows[i].chosen == kLeftOut ? QString() : unknown_[i].nearestIds.value(rows[i].chosen - kNearest);
        std::erase_if(draft.areas, [&](const AreaChoice& choice) { return choice.text == unknown_[i].text; });
        draft.areas.push_back({unknown_[i].text, id});
    }
}

} // namespace tessaro
