#pragma once

class QLineEdit;
class QPushButton;

namespace distinta {

// A day typed as dd/mm/yyyy in a field of its own width; Enter presses conferma.
void preparaCampoData(QLineEdit *campo, QPushButton *conferma);

} // namespace distinta
