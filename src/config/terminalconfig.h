// All that a session says about its terminal window.
#pragma once

#include <memory>
#include <span>

#include "config/terminalmap.h"
#include "config/terminalsettings.h"
#include "profile/vprofilecomposite.h"

namespace connectdialog {

/// A part of SessionConfig, read from the session's key. Wrong values are corrected as there.
class TerminalConfig : public VProfileComposite<TerminalConfig>, public TerminalSettings {
  public:
    /// `key` may be null: then every member has its default. `hasKelda` is the answer of HasKeldaEmulation.
    TerminalConfig(VProfileKey* key, bool hasKelda);

    /// In storage order; the index is what GetMember takes.
    static std::span<const MemberAccess<TerminalConfig>> Members();

    /// The tables of "User Font Map" and "User Line Drawing Map", or null. They are read with the terminal and not
    /// again when the file's name changes; copies of the terminal share them.
    const TerminalMap* GetFontMap() const { return fontMap.get(); }
    const TerminalMap* GetLineDrawingMap() const { return lineDrawingMap.get(); }

  private:
    void LoadEmulation(VProfileKey* key, bool hasKelda);
    void LoadScreen(VProfileKey* key);
    void LoadResizing(VProfileKey* key);
    void LoadColors(VProfileKey* key);
    void LoadFonts(VProfileKey* key);
    void LoadCursor(VProfileKey* key);
    void LoadKeyboard(VProfileKey* key);
    void LoadModes(VProfileKey* key);
    void LoadBehavior(VProfileKey* key);
    void LoadIdentity(VProfileKey* key);
    void LoadTranslation(VProfileKey* key);
    void LoadUserParts(VProfileKey* key);

    std::shared_ptr<const TerminalMap> fontMap;
    std::shared_ptr<const TerminalMap> lineDrawingMap;
};

}  // namespace connectdialog
