#include "DeclarativeUI/SpokenWords.h"

namespace vantix {

// clang-format off
const SpokenWordTable& knownSpokenWords() {
    static const auto& table = *new const SpokenWordTable{
        {"en", {"Close", "Rating", "Star", "heading", "image", "button", "radio button", "check box", "adjustable",
                "dialog", "selected", "not selected", "checked", "not checked", "#1 of #2"}},
        {"de", {"Schließen", "Bewertung", "Stern", "Überschrift", "Bild", "Taste", "Optionsfeld", "Kontrollkästchen",
                "anpassbar", "Dialog", "ausgewählt", "nicht ausgewählt", "aktiviert", "nicht aktiviert", "#1 von #2"}},
        {"fr", {"Fermer", "Note", "Étoile", "titre", "image", "bouton", "bouton radio", "case à cocher", "réglable",
                "boîte de dialogue", "sélectionné", "non sélectionné", "coché", "non coché", "#1 sur #2"}},
        {"es", {"Cerrar", "Valoración", "Estrella", "encabezado", "imagen", "botón", "botón de opción",
                "casilla de verificación", "ajustable", "cuadro de diálogo", "seleccionado", "no seleccionado",
                "marcado", "no marcado", "#1 de #2"}},
        {"it", {"Chiudi", "Valutazione", "Stella", "intestazione", "immagine", "pulsante", "pulsante di opzione",
                "casella di controllo", "regolabile", "finestra di dialogo", "selezionato", "non selezionato",
                "selezionato", "non selezionato", "#1 di #2"}},
        {"pt", {"Fechar", "Avaliação", "Estrela", "título", "imagem", "botão", "botão de opção", "caixa de seleção",
                "ajustável", "caixa de diálogo", "selecionado", "não selecionado", "marcado", "não marcado",
                "#1 de #2"}},
        {"nl", {"Sluiten", "Beoordeling", "Ster", "kop", "afbeelding", "knop", "keuzerondje", "selectievakje",
                "aanpasbaar", "dialoogvenster", "geselecteerd", "niet geselecteerd", "aangevinkt", "niet aangevinkt",
                "#1 van #2"}},
        {"ar", {"إغلاق", "التقييم", "نجمة", "عنوان", "صورة", "زر", "زر اختيار", "خانة اختيار", "قابل للضبط", "مربع حوار",
                "محدد", "غير محدد", "محدد", "غير محدد", "#1 من #2"}},
        {"he", {"סגירה", "דירוג", "כוכב", "כותרת", "תמונה", "לחצן", "לחצן בחירה", "תיבת סימון", "ניתן לכוונון",
                "תיבת דו-שיח", "נבחר", "לא נבחר", "מסומן", "לא מסומן", "#1 מתוך #2"}},
        {"ja", {"閉じる", "評価", "星", "見出し", "画像", "ボタン", "ラジオボタン", "チェックボックス", "調整可能",
                "ダイアログ", "選択済み", "未選択", "チェック済み", "チェックなし", "#2中#1"}},
        {"ko", {"닫기", "평가", "별", "제목", "이미지", "버튼", "라디오 버튼", "체크상자", "조절 가능", "대화상자",
                "선택됨", "선택 안 됨", "선택됨", "선택 안 됨", "#2개 중 #1"}},
    };
    return table;
}
// clang-format on

SpokenWords spokenWords(const SpokenWordTable& table, const std::string& language, const std::string& otherwise) {
    for (const std::string& tried : {language, otherwise, std::string("en")}) {
        if (auto known = table.find(tried); known != table.end()) return known->second;
    }
    return {};
}

}  // namespace vantix
