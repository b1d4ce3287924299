#pragma once
// The program's version, in one place. Read by C++ code, by the resource
// compiler (the version blocks of heralder.exe and heralder-tool.exe) and by
// scripts/package.sh (the installer and its "Apps & features" entry), so that
// the About box, Explorer's Details tab and the installer cannot disagree.
// Plain #defines only: windres and the shell read this file too.

#define HERALDER_VERSION_MAJOR 17
#define HERALDER_VERSION_MINOR 0
#define HERALDER_VERSION_LETTER 'a'
#define HERALDER_VERSION_REVISION 2

// Four-part form for file version blocks and the manifest: 17.0.0.2 (the
// letter counts from "a" = 0, as in the packed product version).
#define HERALDER_VERSION_COMMAS 17, 0, 0, 2
#define HERALDER_VERSION_DOTTED "17.0.0.2"
// What people see: "17.0a", and the revision in the About box.
#define HERALDER_VERSION_DISPLAY "17.0a"

#define HERALDER_COMPANY "Quenmark"
#define HERALDER_PRODUCT "Quenmark Heralder"
#define HERALDER_COPYRIGHT "Copyright (C) 2026 Quenmark"
