#pragma once

class MainContext;

// The transport as far as it stands: stopping clears the playing highlight and the Play Next
// mark. Installed into the context's hooks.
void player_Stop(MainContext& ctx);
void Player_install(MainContext& ctx);
