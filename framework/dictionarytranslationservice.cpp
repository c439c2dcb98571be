#include "framework/dictionarytranslationservice.h"

namespace fw {

DictionaryTranslationService::DictionaryTranslationService()
{
    // Expand/collapse button of the classification tree: its mode is read back from the first
    // word of the caption, so the collapse label must begin with "COMPRIMI".
    insert(94560, QStringLiteral("ESPANDI LIVELLO "));
    insert(94561, QStringLiteral("COMPRIMI LIVELLO "));
    insert(94562, QStringLiteral("° livello"));
    insert(94563, QStringLiteral("ESPANDI/COMPRIMI"));

    insert(QStringLiteral("Clienti"), QStringLiteral("Clienti"));
    insert(QStringLiteral("Fornitori"), QStringLiteral("Fornitori"));
}

QString DictionaryTranslationService::text(int id, const QString &defaultText) const
{
    return m_texts.value(id, defaultText);
}

QString DictionaryTranslationService::translate(const QString &caption) const
{
    return m_captions.value(caption, caption);
}

void DictionaryTranslationService::insert(int id, const QString &text)
{
    m_texts.insert(id, text);
}

void DictionaryTranslationService::insert(const QString &caption, const QString &translation)
{
    m_captions.insert(caption, translation);
}

} // namespace fw
