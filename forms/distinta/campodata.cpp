#include "forms/distinta/campodata.h"

#include <QLineEdit>
#include <QPushButton>

namespace distinta {

void preparaCampoData(QLineEdit *campo, QPushButton *conferma)
{
    campo->setPlaceholderText(QStringLiteral("gg/mm/aaaa"));
    campo->setMaxLength(10);
    campo->setFixedWidth(campo->fontMetrics().horizontalAdvance(QStringLiteral("00/00/00000")) + 12);
    QObject::connect(campo, &QLineEdit::returnPressed, conferma, &QPushButton::click);
}

} // namespace distinta
