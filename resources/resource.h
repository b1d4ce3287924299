#pragma once
// Resource and control ids shared by heralder.rc and the code. Only #define
// lines: the resource compiler reads this file through its C preprocessor.

// Program icon in all its sizes; the message box draws it in control 10.
#define IDI_HERALDER 9963

// Message box templates: with and without a title bar.
#define IDD_MESSAGEBOX_TITLED 9898
#define IDD_MESSAGEBOX_PLAIN 9899

// Controls shared by the program's dialogs.
#define IDC_BUTTON1 1
#define IDC_CANCELBUTTON 2
#define IDC_NOBUTTON 7
#define IDC_HELPBUTTON 9
#define IDC_ICONBUTTON 10
#define IDC_MESSAGETEXT 65
#define IDC_CHECKBOX1 500
#define IDC_CHECKBOX2 501
#define IDC_CHECKBOX3 502
// Notes are created at run time below the check boxes.
#define IDC_NOTE1 503
#define IDC_NOTE2 504
#define IDC_NOTE3 505

// String table.
#define IDS_APP_NAME 109
#define IDS_MESSAGE_TITLE 110
#define IDS_DISMISS 111
#define IDS_YES 112
#define IDS_NO 113
#define IDS_CANCEL 114
#define IDS_OK 115
#define IDS_SHOW_AGAIN 116
#define IDS_SHOW_AGAIN_NOTE 117
