#include "reminders/reminder_tables.h"

namespace orvo::reminders {
namespace {

using schema::Column;
using schema::Flag;
using schema::Long;
using schema::Memo;
using schema::Text;

// One stage of a recall in RSTable: its period text, letter file and post card message.
QList<Column> RecallStage(const QString& prefix) {
    return {Text(prefix, 5), Text(prefix + QStringLiteral("Let"), 30),
            Text(prefix + QStringLiteral("Msg"), 255)};
}

}  // namespace

void DeclareReminderTables(schema::Catalog& catalog) {
    schema::Table recalls{
        QStringLiteral("RSTable"),
        {schema::Identity(QStringLiteral("RCRecNum")), Long(QStringLiteral("OffLocID")),
         Text(QStringLiteral("RCTtl"), 65), Text(QStringLiteral("RCCod"), 100),
         Text(QStringLiteral("RCExcCod"), 100), Text(QStringLiteral("RCRecPer"), 5)},
        {{QStringLiteral("OffLocID")}}};
    recalls.columns << RecallStage(QStringLiteral("RCDuePer"));
    for (int stage = 1; stage <= 6; ++stage)
        recalls.columns << RecallStage(QStringLiteral("RCLatPer%1").arg(stage));
    recalls.columns << RecallStage(QStringLiteral("RCCutOff"))
                    << Flag(QStringLiteral("RCDonPriDay")) << Flag(QStringLiteral("RCSetupFlag"))
                    << Flag(QStringLiteral("RCIncSamDay")) << Flag(QStringLiteral("RCShoOnToDo"));
    catalog.Add(recalls);

    catalog.Add({QStringLiteral("emmTable"),
                 {schema::Identity(QStringLiteral("emmID")), Text(QStringLiteral("emmDes"), 50),
                  Flag(QStringLiteral("emmHasCutOff")), Flag(QStringLiteral("emmEna")),
                  Long(QStringLiteral("emmAppDefTyp")), Long(QStringLiteral("OffLocID"))},
                 {{QStringLiteral("emmAppDefTyp")}}});

    catalog.Add({QStringLiteral("emsTable"),
                 {schema::Identity(QStringLiteral("emsID")), Long(QStringLiteral("emsLinTyp")),
                  Long(QStringLiteral("emsLinID")), Long(QStringLiteral("emsSeq")),
                  Long(QStringLiteral("emsPer")), Text(QStringLiteral("emsPerTyp"), 1),
                  Long(QStringLiteral("emsPID"))},
                 {{QStringLiteral("emsLinID"), QStringLiteral("emsLinTyp")}}});

    catalog.Add({QStringLiteral("ReminderMessageTable"),
                 {schema::Identity(QStringLiteral("rmtID")), Long(QStringLiteral("rmtemmID")),
                  Long(QStringLiteral("rmtLinID")), Flag(QStringLiteral("rmtTexAutRetMes")),
                  Flag(QStringLiteral("rmtEmaAutRetMes")), Memo(QStringLiteral("rmtTexMes")),
                  Memo(QStringLiteral("rmtEMaMes")), Memo(QStringLiteral("rmtCarMes")),
                  Memo(QStringLiteral("rmtLetFil")), Memo(QStringLiteral("rmtVoiMes")),
                  Memo(QStringLiteral("rmtVoiMesSpanish"))},
                 {{QStringLiteral("rmtLinID")}}});

    catalog.Add({QStringLiteral("eBusContactSequence"),
                 {schema::Identity(QStringLiteral("ebcID")), Long(QStringLiteral("ebcLinID")),
                  Long(QStringLiteral("ebcLinTyp")), Long(QStringLiteral("ebcpID")),
                  Long(QStringLiteral("ebcSeq")), Long(QStringLiteral("ebcPer")),
                  Long(QStringLiteral("ebcConMet"))},
                 {{QStringLiteral("ebcLinID"), QStringLiteral("ebcLinTyp")}}});
}

}  // namespace orvo::reminders
