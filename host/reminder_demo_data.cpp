#include "host/reminder_demo_data.h"

#include <QColor>
#include <QDir>
#include <QFile>
#include <QImage>
#include <QPainter>
#include <QPainterPath>

#include "host/host_gic.h"
#include "host/reminder_host.h"
#include "platform/db/recordset.h"
#include "platform/db/sql_text.h"

namespace orvo::host {
namespace {

struct DemoTemplate {
    const char* typeFolder;
    const char* folder;
    const char* title;
    QColor color;
    const char* heading;
    const char* words;
};

const DemoTemplate kTemplates[] = {
    {"RecallReminder", "SmileCheck", "Smile Check-Up", QColor(0x2e, 0x7d, 0x9a),
     "Time for a check-up",
     "{Patient First Name}, it's time for your {Recall Title} with {Provider Title} {Provider "
     "Last Name}. Please call {Office Phone} to schedule your visit."},
    {"AppointmentConfirmation", "BlueSky", "Blue Sky Confirmation", QColor(0x3a, 0x6e, 0xc8),
     "Please confirm your visit",
     "{Patient Full Name} has an appointment with {Provider Title} {Provider Last Name} on "
     "{Appointment Day of the Week}, {Appointment Date} at {Appointment Time}."},
    {"AppointmentReminder", "Garden", "Garden Reminder", QColor(0x4c, 0x9a, 0x52), "See you soon",
     "{Appointment Patient First Name}, we look forward to seeing you on {Appointment Date} at "
     "{Appointment Start Time}. {Office Name}, {Office Address for Map}."},
    {"BirthdayReminder", "Balloons", "Birthday Balloons", QColor(0xd0, 0x4a, 0x7a),
     "Happy Birthday!",
     "Dear {Patient First Name}, everyone at {Office Name} wishes you a wonderful birthday. "
     "Dr. {Provider Full Name} and staff"},
    {"Newsletter", "Seasons", "Seasons Newsletter", QColor(0xc8, 0x8a, 0x2a),
     "News from our office",
     "Dear {Patient First Name}, this season at {Office Name}: longer evening hours and a new "
     "hygienist, Ms. Müller. Call {Office Phone} to book."},
};

// A banner image for a template: a band in the template's color with a drawn tooth.
QImage Banner(const QColor& color) {
    QImage image(480, 96, QImage::Format_ARGB32);
    image.fill(color);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(color.lighter(130));
    painter.drawEllipse(QPoint(400, 48), 120, 120);
    painter.setBrush(Qt::white);
    QPainterPath tooth;
    tooth.moveTo(40, 30);
    tooth.cubicTo(40, 10, 64, 14, 70, 22);
    tooth.cubicTo(76, 14, 100, 10, 100, 30);
    tooth.cubicTo(100, 50, 92, 56, 90, 80);
    tooth.cubicTo(88, 88, 80, 88, 78, 76);
    tooth.lineTo(74, 60);
    tooth.cubicTo(72, 56, 68, 56, 66, 60);
    tooth.lineTo(62, 76);
    tooth.cubicTo(60, 88, 52, 88, 50, 80);
    tooth.cubicTo(48, 56, 40, 50, 40, 30);
    painter.drawPath(tooth);
    return image;
}

QString Page(const DemoTemplate& t) {
    return QStringLiteral(
               "<!DOCTYPE HTML PUBLIC \"-//W3C//DTD HTML 4.0 Transitional//EN\">\r\n"
               "<html>\r\n<head>\r\n<title>%1</title>\r\n"
               "<!--{SIZE} Width=\"480\" Height=\"420\"-->\r\n</head>\r\n"
               "<body bgcolor=\"#FFFFFF\" text=\"#000000\">\r\n"
               "<p><img src=\"{ImagePath}images\\banner.png\" width=\"480\" height=\"96\"></p>\r\n"
               "<h2 style=\"font-family:'Arial';color:%2;\">%3</h2>\r\n"
               "<p><span style=\"font-family:'Arial';font-size:12pt;\">%4</span></p>\r\n"
               "<p><span style=\"font-family:'Arial';font-size:10pt;\">{Office Name} &middot; "
               "{Office Phone} &middot; {Office Website Address}</span></p>\r\n"
               "</body>\r\n</html>\r\n")
        .arg(QString::fromUtf8(t.title), t.color.name(), QString::fromUtf8(t.heading),
             QString::fromUtf8(t.words));
}

void WriteText(const QString& path, const QString& text) {
    QFile file(path);
    if (file.open(QIODevice::WriteOnly))
        file.write(text.toUtf8());
}

qint64 Insert(db::Connection& c, const QString& sql) {
    return c.InsertWithIdentity(sql);
}

// A schedule stage with its message row; bodies are demo constants, quoted.
void Stage(db::Connection& c, int linkType, qint64 owner, qint64 master, int sequence, int period,
           const char* unit, const QString& text, const QString& eMail, const QString& voice) {
    const qint64 stage = Insert(
        c, QStringLiteral("insert into emsTable (emsLinTyp, emsLinID, emsSeq, emsPer, emsPerTyp, "
                          "emsPID) values (%1, %2, %3, %4, '%5', 0)")
               .arg(linkType)
               .arg(owner)
               .arg(sequence)
               .arg(period)
               .arg(QLatin1String(unit)));
    c.Execute(QStringLiteral("insert into ReminderMessageTable (rmtemmID, rmtLinID, "
                             "rmtTexAutRetMes, rmtEmaAutRetMes, rmtTexMes, rmtEMaMes, rmtCarMes, "
                             "rmtLetFil, rmtVoiMes, rmtVoiMesSpanish) values (%1, %2, 1, 1, %3, "
                             "%4, %3, ' ', %5, ' ')")
                  .arg(master)
                  .arg(stage)
                  .arg(db::QuoteText(text), db::QuoteText(eMail), db::QuoteText(voice)));
}

void Sequence(db::Connection& c, qint64 owner, int linkType, int stage, QList<int> methods) {
    for (int i = 0; i < methods.size(); ++i) {
        c.Execute(QStringLiteral("insert into eBusContactSequence (ebcLinID,ebcLinTyp,ebcpID,"
                                 "ebcSeq,ebcPer,ebcConMet) values (%1,%2,0,%3,%4,%5)")
                      .arg(owner)
                      .arg(linkType)
                      .arg(i + 1)
                      .arg(stage)
                      .arg(methods[i]));
    }
}

}  // namespace

void SeedDemoTemplates(const QString& dataPath) {
    for (const DemoTemplate& t : kTemplates) {
        const QString folder = dataPath + QStringLiteral("STP/Templates/") +
                               QLatin1String(t.typeFolder) + u'/' + QLatin1String(t.folder) + u'/';
        if (QDir(folder).exists())
            continue;
        QDir().mkpath(folder + QStringLiteral("images"));
        WriteText(folder + QStringLiteral("Parameters.ini"),
                  QStringLiteral("[ORVO EMAIL TEMPLATE]\r\nFile=index.html\r\nTitle=%1\r\n")
                      .arg(QString::fromUtf8(t.title)));
        WriteText(folder + QStringLiteral("index.html"), Page(t));
        Banner(t.color).save(folder + QStringLiteral("images/banner.png"));
    }
}

void SeedDemoReminders(db::Connection& c, const QString& dataPath, int officeLocationId) {
    if (db::ReadScalar(c, QStringLiteral("SELECT count(*) FROM emmTable")).toInt() > 0)
        return;
    db::Transaction transaction(c);
    const char* names[] = {"Recall Reminder", "Appointment Confirmation", "Appointment Reminder",
                           "Birthday Reminder", "News Letter"};
    qint64 masters[6] = {};
    for (int type = 1; type <= 5; ++type) {
        masters[type] = Insert(
            c, QStringLiteral("Insert into emmTable (emmDes,emmHasCutOff,emmEna,emmAppDefTyp,"
                              "OffLocID) values ('%1', 0, 1, %2, -1)")
                   .arg(QLatin1String(names[type - 1]))
                   .arg(type));
    }
    const int recallLink = ReminderHost::kLinkRecall;
    const int masterLink = ReminderHost::kLinkMaster;

    const qint64 prophy = Insert(
        c, QStringLiteral("insert into RSTable (OffLocID, RCTtl, RCCod, RCRecPer, RCDuePer, "
                          "RCLatPer1, RCCutOff) values (%1, 'Prophy and Exam', 'D1110,D0120', "
                          "'6M', '0D', '30D', '1Y')")
               .arg(officeLocationId));
    const qint64 perio =
        Insert(c, QStringLiteral("insert into RSTable (OffLocID, RCTtl, RCCod, RCRecPer, RCDuePer) "
                                 "values (%1, 'Perio Maintenance', 'D4910', '3M', '0D')")
                      .arg(officeLocationId));
    const QString recallText = QStringLiteral(
        "{Patient Full Name}, it's time for {Recall Title} with {Provider Title} {Provider Last "
        "Name}. Please call our office at {Office Phone} to schedule your appointment.");
    Stage(c, recallLink, prophy, masters[1], 0, 0, "D", recallText,
          QStringLiteral("<p>") + recallText + QStringLiteral("</p>"), recallText);
    Stage(c, recallLink, prophy, masters[1], 1, 30, "D",
          QStringLiteral("{Patient First Name}, your {Recall Title} is past due. Please call "
                         "{Office Phone}."),
          QStringLiteral("<p>{Patient First Name}, your {Recall Title} is past due.</p>"),
          recallText);
    Stage(c, recallLink, prophy, masters[1], 2147483647, 1, "Y", QStringLiteral(" "),
          QStringLiteral(" "), QStringLiteral(" "));
    Stage(c, recallLink, perio, masters[1], 0, 0, "D", recallText, QStringLiteral(" "),
          QStringLiteral(" "));
    Sequence(c, prophy, recallLink, 0, {1, 2, 8});
    Sequence(c, prophy, recallLink, 1, {8, 4});
    Sequence(c, perio, recallLink, 0, {2, 32});

    Stage(c, masterLink, masters[2], masters[2], 1, 2, "D",
          QStringLiteral("{Patient First Name}, please confirm your visit with {Provider Title} "
                         "{Provider Last Name} on {Appointment Date} at {Appointment Time}."),
          QStringLiteral("<p>{Patient Full Name} has an appointment on {Appointment Date} at "
                         "{Appointment Time}.</p>"),
          QStringLiteral("Hello {Patient First Name}. This is {Office Name} calling about your "
                         "appointment on {Appointment Date}."));
    Stage(c, masterLink, masters[2], masters[2], 2, 1, "D",
          QStringLiteral("Reminder: {Appointment Date} at {Appointment Time} with {Provider "
                         "Title} {Provider Last Name}."),
          QStringLiteral(" "), QStringLiteral(" "));
    Stage(c, masterLink, masters[3], masters[3], 1, 7, "D",
          QStringLiteral("See you on {Appointment Day of the Week}, {Appointment Date} at "
                         "{Appointment Time}."),
          QStringLiteral("<PredefinedTemplate=\"Garden\\index.html\"/>"), QStringLiteral(" "));
    Stage(c, masterLink, masters[4], masters[4], 0, 0, "D", QStringLiteral(" "),
          QStringLiteral("<PredefinedTemplate=\"Balloons\\index.html\"/>"), QStringLiteral(" "));
    Sequence(c, masters[2], masterLink, 0, {1, 2, 32});
    Sequence(c, masters[3], masterLink, 0, {2, 1});
    Sequence(c, masters[4], masterLink, 0, {2, 8});
    Sequence(c, masters[5], masterLink, 0, {2});

    // Recall list entries of a few demo patients: due by post card, and past due by text.
    for (int person = 1001; person <= 1004; ++person) {
        c.Execute(QStringLiteral("insert into RecTable (rRCRecNum, rPID, rDueDat, rConMet, "
                                 "rStage) values (%1, %2, #09/16/2024#, %3, %4)")
                      .arg(person % 2 ? prophy : perio)
                      .arg(person)
                      .arg(person % 2 ? 8 : 1)
                      .arg(person > 1002 ? 1 : 0));
    }
    transaction.Commit();
    SeedDemoTemplates(dataPath);
}

}  // namespace orvo::host
