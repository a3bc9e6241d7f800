# Another user's session comes to the front while a converted click is held: the button goes up and
# the mouse is theirs at once, whoever's fingers are on it. Back in front the program takes it again.
# The login manager is told of in files; these are written as it writes them.
. /t/cases/clicks.sh
trap 'rm -rf /run/systemd/sessions /run/systemd/users' EXIT
mkdir -p /run/systemd/sessions /run/systemd/users
session() { # session ACTIVE
  printf 'UID=0\nUSER=root\nACTIVE=%s\nSTATE=%s\nTYPE=x11\nCLASS=user\n' "$1" \
    "$([ "$1" = 1 ] && echo active || echo online)" > /run/systemd/sessions/.new
  mv /run/systemd/sessions/.new /run/systemd/sessions/c1
}
session 1
printf 'NAME=root\nSTATE=active\nDISPLAY=c1\nSESSIONS=c1\n' > /run/systemd/users/0
mirrored mouse
hold mouse
session 0
await watch 'BTN_MIDDLE release'
await watch '^removed \S+ velotap/clone'
let_go mouse
click mouse bench/mouse
holds velotap "$(node mouse)" && figure node-open 1 || figure node-open 0
session 1
taken 2
click mouse velotap/clone
nothing_held
