// SPDX-License-Identifier: Zlib
#include "game/Player.h"
#include "tools/Inspector.h"

Inspector::Motion Inspector::motion(const Player& player) {
    return {player.x,       player.y,        player.vx,         player.vy,
            player.kicking, player.airborne, player.facingRight};
}

void Inspector::setMotion(Player& player, const Motion& motion) {
    player.x = motion.x;
    player.y = motion.y;
    player.vx = motion.vx;
    player.vy = motion.vy;
    player.kicking = motion.kicking;
    player.airborne = motion.airborne;
    player.facingRight = motion.facingRight;
}
