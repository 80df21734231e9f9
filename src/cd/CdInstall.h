#pragma once

class CdDrive;
class MainContext;

// The CD player: the drive behind the CD routines, mnuOpenCDPlayer, and the rule that the disc
// and the playlist never sound at once.
void CDPlayer_install(MainContext& ctx);

// The drive the CD routines talk to, once installed.
CdDrive* cd_Drive();
