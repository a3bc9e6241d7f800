# Plugged and unplugged a thousand times: nothing is left behind, and nothing grows.
. /t/cases/cycles.sh
come_and_go 1000
