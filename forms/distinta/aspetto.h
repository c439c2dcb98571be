#pragma once

#include <QObject>

class FormFrame;
class QSplitter;

namespace distinta {

class Albero;

// The editor's proportions and what each user leaves of them: the two splitters (the management
// panel beside the tree, the tree above the pages under it) hold shares of the form's size, and
// those shares and the tree's column widths come back the next time the editor opens.
class Aspetto : public QObject
{
    Q_OBJECT

public:
    Aspetto(FormFrame &form, Albero &albero);

    QSplitter *verticale() const { return SPLITTERVerticale; }
    QSplitter *orizzontale() const { return SPLITTERorizzontale; }

    void SplitterSetup();
    // Places the panels at the splitters' shares of the current size.
    void SplitterReposition();
    void ripristinaAspetto();
    void registraAspetto();

    static QString fileAspetto(); // where each user's layout is kept
    // Tests and tools keep their layouts apart from the user's; an empty name keeps nothing.
    static void impostaFileAspetto(const QString &file);

private:
    void registraPosizioneSplitter();

    FormFrame &m_form;
    Albero &m_albero;
    QSplitter *SPLITTERVerticale;
    QSplitter *SPLITTERorizzontale;
    double m_quotaGestione = 0.30; // share of the width taken by the management panel
    double m_quotaDistinta = 0.70; // share of the right side's height taken by the tree
};

} // namespace distinta
