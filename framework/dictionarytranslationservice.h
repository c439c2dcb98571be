#pragma once

#include "framework/translationservice.h"

#include <QHash>

namespace fw {

// The host's Italian dictionary, held in memory. Starts with the texts the suite's modules
// ask for; a host may add or replace entries.
class DictionaryTranslationService : public TranslationService
{
public:
    DictionaryTranslationService();

    QString text(int id, const QString &defaultText) const override;
    QString translate(const QString &caption) const override;

    void insert(int id, const QString &text);
    void insert(const QString &caption, const QString &translation);

private:
    QHash<int, QString> m_texts;
    QHash<QString, QString> m_captions;
};

} // namespace fw
