#pragma once

#include <gtest/gtest.h>

#include <QString>
#include <deque>
#include <memory>
#include <optional>

#include "host/host_gic.h"
#include "host/host_session.h"
#include "host/host_tables.h"
#include "platform/prompts.h"
#include "platform/schema/schema.h"
#include "tests/support/test_database.h"

namespace orvo::host::test {

// Answers prompts from a queue and records what was asked; a prompt nobody expected fails the
// test with its text.
class QueuedPrompts : public Prompts {
public:
    struct Asked {
        QString text;
        Buttons buttons;
        Icon icon;
        QString title;
        int defaultButton;
    };

    std::deque<int> answers;
    std::deque<std::optional<QString>> inputs;
    std::vector<Asked> asked;

    int Message(const QString& text, Buttons buttons, Icon icon, const QString& title,
                int defaultButton) override {
        asked.push_back({text, buttons, icon, title, defaultButton});
        if (answers.empty()) {
            ADD_FAILURE() << "Unexpected prompt: " << text.toStdString();
            return AnswerCancel;
        }
        const int answer = answers.front();
        answers.pop_front();
        return answer;
    }
    int Choose(const QString& text, const QString&, const QStringList&, int, Icon) override {
        ADD_FAILURE() << "Unexpected choice: " << text.toStdString();
        return 0;
    }
    std::optional<QString> Input(const QString& prompt, const QString& title,
                                 const QString& defaultText, bool) override {
        asked.push_back({prompt, Buttons::OkCancel, Icon::None, title, 1});
        if (inputs.empty()) {
            ADD_FAILURE() << "Unexpected input: " << prompt.toStdString();
            return std::nullopt;
        }
        auto answer = inputs.front();
        inputs.pop_front();
        return answer;
    }
    void ShowBanner(const QString&) override {}
    void HideBanner() override {}
    void Beep() override {}
};

// A session over a fresh database holding the host's tables, logged in as JDOE at office
// location 1 on station FRONT1, working on 03-15-2024.
class HostDatabaseTest : public testing::TestWithParam<db::Engine> {
protected:
    void SetUp() override {
        ORVO_SKIP_WITHOUT_ENGINE(GetParam());
        database_ = std::make_unique<orvo::test::TestDatabase>(GetParam());
        session_.connection = database_->Connect();
        schema::Catalog catalog;
        DeclareHostTables(catalog);
        schema::Apply(*session_.connection, catalog);
        session_.loginName = QStringLiteral("JDOE");
        session_.stationId = QStringLiteral("FRONT1");
        session_.officeLocationId = 1;
        session_.today = QDate(2024, 3, 15);
        gic_ = std::make_unique<HostGIC>(session_);
        SetPrompts(&prompts_);
    }
    void TearDown() override { SetPrompts(nullptr); }

    db::Connection& connection() { return *session_.connection; }
    HostGIC& gic() { return *gic_; }

    std::unique_ptr<orvo::test::TestDatabase> database_;
    HostSession session_;
    QueuedPrompts prompts_;
    std::unique_ptr<HostGIC> gic_;
};

}  // namespace orvo::host::test
