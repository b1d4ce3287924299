#pragma once
// Resource and control ids shared by the .rc files and the code. Only #define
// lines: the resource compiler reads this file through its C preprocessor.
//
// Numbering plan. Control ids are the contract between a template and its
// code, so each template has one block below listing every id it uses. Ids
// that several dialogs share are tied to the system's own (IDOK, IDCANCEL,
// IDNO, IDHELP) so that Enter and Escape work as the dialog manager expects.
// Menu command ids double as the main window's command numbers. Ranges:
//   1-10      shared buttons              101-108, 997-999  menu commands
//   60-65     message and platform texts  200               the item list
//   500-505   message box check boxes and notes
//   601-616   colour picker (up-downs 10611-10616)
//   5001      About template              7000-7003         list markers
//   7771      sign-up banner              7773              default item picture
//   9898-9992 message box and incompatibility templates
//   9963      program icon

// ---- Shared by every dialog of the program --------------------------------
#define IDC_BUTTON1 IDOK           // the default button ("OK", "Close", "Next", ...)
#define IDC_CANCELBUTTON IDCANCEL  // Cancel; Escape sends it
#define IDC_NOBUTTON IDNO          // the message box's "No"
#define IDC_HELPBUTTON IDHELP      // opens the manual at the dialog's topic
#define IDC_ICONBUTTON 10          // disabled owner-drawn button showing the icon

// ---- Icons and bitmaps -------------------------------------------------------
#define IDI_HERALDER 9963  // also named HERALDER and HERALDERSMALL in the .rc
// Item list markers: 16 x 16, 32 bits per pixel (blue, green, red, alpha),
// raw data resources. By importance: 3 red, 2 yellow, 1 green, other blue-grey.
#define IDR_MARKER_OTHER 7000
#define IDR_MARKER_HIGH 7001
#define IDR_MARKER_MEDIUM 7002
#define IDR_MARKER_LOW 7003
// The same markers drawn at 32 x 32, for screens at more than 150 %.
#define IDR_MARKER_OTHER_2X 7010
#define IDR_MARKER_HIGH_2X 7011
#define IDR_MARKER_MEDIUM_2X 7012
#define IDR_MARKER_LOW_2X 7013

// ---- Item pictures -------------------------------------------------------------
// The notification windows' default picture: a whole 64 x 64 bitmap file, 32
// bits per pixel with straight alpha (resources/pictures/), raw data.
#define IDR_DEFAULT_PICTURE 7773
#define IDR_DEFAULT_PICTURE_2X 7774  // the same drawing at 128 x 128

// ---- Main window: menu "MainMenu" and its commands ----------------------------
#define IDM_SETUP 101
#define IDM_EXIT 102
#define IDM_GO 103
#define IDM_PROMPT_MARK_ALL 104   // multiple-items prompt results; ignored as commands
#define IDM_PROMPT_AUTOMATIC 105
#define IDM_SHOW_NOTIFICATIONS 106
#define IDM_STARTUP_MANAGER 107
#define IDM_INITIAL_CONFIG 108    // no menu item: only start-up sends it
#define IDM_SYSTEM_INFO 997
#define IDM_HELP 998
#define IDM_ABOUT 999
#define IDC_ITEMLIST 200          // the owner-drawn item list filling the window

// ---- Message boxes: templates 9898 (title bar) and 9899 (none) -----------------
#define IDD_MESSAGEBOX_TITLED 9898
#define IDD_MESSAGEBOX_PLAIN 9899
//      IDC_BUTTON1, IDC_ICONBUTTON from the template; IDC_NOBUTTON,
//      IDC_CANCELBUTTON and IDC_HELPBUTTON made at run time when asked for.
#define IDC_MESSAGETEXT 65
#define IDC_CHECKBOX1 500
#define IDC_CHECKBOX2 501
#define IDC_CHECKBOX3 502
#define IDC_NOTE1 503  // notes are made at run time below the check boxes
#define IDC_NOTE2 504
#define IDC_NOTE3 505

// ---- Incompatible platform: template 9992 ------------------------------------
#define IDD_INCOMPATIBLE 9992
//      IDC_BUTTON1 "Web page", IDC_CANCELBUTTON "Dismiss"
#define IDC_INCOMPATIBLE_TEXT 60

// ---- Startup manager: template "STARTUPOPTIONSBOX" ----------------------------
//      IDC_BUTTON1 "Close", IDC_CANCELBUTTON, IDC_HELPBUTTON, IDC_ICONBUTTON; the
//      explanation and the group box are IDC_STATIC (nothing addresses them).
// The radio ids are the StartupOptions values they stand for.
#define IDC_STARTUP_MANUAL 101
#define IDC_STARTUP_AUTOMATIC 102

// ---- Multiple-items prompt: template "DoMultipleItemPromptBox" ------------------
//      IDC_BUTTON1 "OK" (enabled once a choice is made), IDC_HELPBUTTON,
//      IDC_ICONBUTTON; the count's label is IDC_STATIC. No Cancel: Escape is
//      ignored. The four choices are the dialog results 0 to 3 in the code.
#define IDC_PROMPT_COUNT 101          // PromptMultipleCount
#define IDC_PROMPT_SHOW_NOW 102
#define IDC_PROMPT_NONE_TODAY 103
#define IDC_PROMPT_IGNORE_ALL 104
#define IDC_PROMPT_DISABLE 105
#define IDC_PROMPT_TEXT 106           // a format with the pending count as "%d"
#define IDC_PROMPT_COUNT_UPDOWN 10101 // IDC_PROMPT_COUNT + 10000, text "2,32760,6"

// ---- Item browser: template "BrowseBox" ---------------------------------------
//      IDC_BUTTON1 "Close", IDC_HELPBUTTON; the labels are IDC_STATIC. Escape
//      is ignored: the browser closes through Close or Enter only.
#define IDC_BROWSE_DATE 101
#define IDC_BROWSE_ORIGINATOR 102
#define IDC_BROWSE_APPLICATION 103
#define IDC_BROWSE_VERSION 104
#define IDC_BROWSE_KEYWORDS 105
#define IDC_BROWSE_TEXT 106
#define IDC_BROWSE_SPARE 107          // in the template, never filled
#define IDC_BROWSE_REGISTERED 108
#define IDC_BROWSE_EVALUATION 109
#define IDC_BROWSE_INIFILE 110
#define IDC_BROWSE_SECTION 111
#define IDC_BROWSE_URL 112
#define IDC_BROWSE_IMPORTANCE 113
#define IDC_BROWSE_IGNOREUNTIL 114
#define IDC_BROWSE_GO 115             // opens the URL; web addresses only
#define IDC_BROWSE_INSTALLED 116

// ---- Alert window: template "AlertBox" ------------------------------------------
//      IDC_BUTTON1 "Next", IDC_CANCELBUTTON, IDC_HELPBUTTON, and IDC_ICONBUTTON,
//      which here shows the item's picture and acts as Go when clicked.
#define IDC_ALERT_HEADER 101     // product, version and release date
#define IDC_ALERT_GO 102         // disabled until the item has a web address
#define IDC_ALERT_NEVERAGAIN 103
#define IDC_ALERT_TEXT 104       // made at run time: the body text, drawn by the window
#define IDC_ALERT_FRAME 105      // the frame round the header line, which goes with it

// ---- Version notice: template "VersionBox" -----------------------------------------
//      IDC_BUTTON1 "Next", IDC_CANCELBUTTON, IDC_HELPBUTTON, IDC_ICONBUTTON (the
//      product icon, disabled); the explanation and the frame are IDC_STATIC.
#define IDC_VERSION_REPORT 101
#define IDC_VERSION_GO 102
#define IDC_VERSION_NEVERAGAIN 103

// ---- First-run sign-up: template "INITCONFIGBOX" -----------------------------
//      IDC_BUTTON1 "Close", IDC_HELPBUTTON, IDC_ICONBUTTON; the rules between
//      the columns are IDC_STATIC. No Cancel button: Escape ends it unchosen.
#define IDC_INITCONFIG_BANNER 101       // owner-drawn, shows IDR_INITCONFIG_BANNER
#define IDC_INITCONFIG_AUTOMATIC 102    // checked at opening when StartupOptions is 102
#define IDC_INITCONFIG_MANUAL 103
#define IDC_INITCONFIG_NEWSLETTER 104
#define IDC_INITCONFIG_NEWSLETTER_TEXT 105
#define IDC_INITCONFIG_TEXT 106         // the sign-up text, set at opening
#define IDC_INITCONFIG_HEADING 107
// The banner: a whole 32-bit bitmap file with straight alpha
// (resources/banner/), raw data, drawn over the button face.
#define IDR_INITCONFIG_BANNER 7771

// ---- About box: template 5001 -------------------------------------------------
//      IDC_BUTTON1 "OK", IDC_ICONBUTTON. No Cancel: Escape is ignored.
#define IDD_ABOUT 5001
#define IDC_ABOUT_NAME 101  // the product name in the title font
#define IDC_ABOUT_TEXT 102  // "Version %d.%d%c%s" and the notice, filled at opening

// ---- System information: template "SYSTEMINFOBOX" ------------------------------
//      IDC_BUTTON1 "Close"; Escape closes too.
#define IDC_SYSINFO_REPORT 101  // read-only edit holding the report
#define IDC_SYSINFO_COPY 102    // the whole report to the clipboard

// ---- Setup: template "SETUPBOX" -------------------------------------------------
//      IDC_BUTTON1 "OK", IDC_CANCELBUTTON, IDC_HELPBUTTON; group boxes, their
//      explanations and the list labels are IDC_STATIC.
#define IDC_SETUP_ALERT 101           // SetupAlertPopup
#define IDC_SETUP_TIP 104             // SetupTipPopup
#define IDC_SETUP_VERSION 106         // SetupVersionPopup
#define IDC_SETUP_OFFTOPIC 108        // SetupOfftopicPopup
#define IDC_SETUP_NOTICE 110          // SetupNoticePopup
#define IDC_SETUP_DATE 113            // CurrentTransactionDate
#define IDC_SETUP_NEWONLY 114         // OnlyShowNewItems
#define IDC_SETUP_NOISY 115           // BeNoisy
#define IDC_SETUP_AUTOMATIC 116       // DoNoticationsAutomatically
#define IDC_SETUP_TEXTCOLOUR 117      // AlertTextColor, owner-drawn swatch
#define IDC_SETUP_BACKCOLOUR 118      // AlertBackgroundColor, owner-drawn swatch
#define IDC_SETUP_SOFTBUTTONS 119     // SoftButtons, owner-drawn list
#define IDC_SETUP_FONT 120            // AlertFontName, owner-drawn sorted list
#define IDC_SETUP_BOLD 121            // AlertFontBold
#define IDC_SETUP_ITALIC 122          // AlertFontItal
#define IDC_SETUP_ANTIALIAS 123       // AlertFontAntialias
#define IDC_SETUP_FONTSIZE 124        // AlertFontSize
#define IDC_SETUP_PREVIEW 125         // disabled owner-drawn font preview
#define IDC_SETUP_GRAPHICS 126        // DownloadGraphics
#define IDC_SETUP_FONTSIZE_UPDOWN 10124  // IDC_SETUP_FONTSIZE + 10000, text "4,144,16"
#define IDC_SETUP_FONTSIZE_LABEL 20124

// ---- Colour picker: template "COMMONColourSelectBox" ------------------------------
//      IDC_BUTTON1 "OK", IDC_CANCELBUTTON; labels are IDC_STATIC. Each field's
//      up-down control is the field's id + 10000 with "min,max,start".
#define IDC_COLOUR_LIST 601           // the table's named colours
#define IDC_COLOUR_NAME 602           // name for Add
#define IDC_COLOUR_ADD 603
#define IDC_COLOUR_DELETE 604
#define IDC_COLOUR_OPEN 605           // another table file
#define IDC_COLOUR_SWATCH 606         // owner-drawn: the chosen colour
#define IDC_COLOUR_FILE 607           // the table's file name
#define IDC_COLOUR_HUE 611
#define IDC_COLOUR_SAT 612
#define IDC_COLOUR_LUM 613
#define IDC_COLOUR_RED 614
#define IDC_COLOUR_GREEN 615
#define IDC_COLOUR_BLUE 616
#define IDC_COLOUR_HUE_UPDOWN 10611
#define IDC_COLOUR_SAT_UPDOWN 10612
#define IDC_COLOUR_LUM_UPDOWN 10613
#define IDC_COLOUR_RED_UPDOWN 10614
#define IDC_COLOUR_GREEN_UPDOWN 10615
#define IDC_COLOUR_BLUE_UPDOWN 10616

// ---- String table ---------------------------------------------------------------
#define IDS_APP_NAME 109
#define IDS_MESSAGE_TITLE 110
#define IDS_DISMISS 111
#define IDS_YES 112
#define IDS_NO 113
#define IDS_CANCEL 114
#define IDS_OK 115
#define IDS_SHOW_AGAIN 116
#define IDS_SHOW_AGAIN_NOTE 117
