#pragma once
// Resource ids of VrlBoot.exe (shared by the resource script and the code).
#define IDI_VRL_PROGRAM 204  // program icon: window icons of every panel
#define IDI_VRL_TRAY 210     // tray and About icon
