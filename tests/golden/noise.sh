# Surveys of moved beads: a knot that stays, and a small one that vanishes.
loopwise survey --noise 0.5 --repeats 5 trefoil.txt | grep 'noise\|vanish'
loopwise survey --noise 0.5 --repeats 5 --seed 3 --csv trefoil.txt | cut -d, -f33-
loopwise survey --noise 0.5 --repeats 5 --threads 1 --json trefoil.txt | grep -o '"noise".*'
awk '{ print $2 / 30, $3 / 30, $4 / 30 }' trefoil.txt >small.txt
loopwise survey --noise 0.5 --repeats 3 --method direction --count 10 --seed 1 small.txt | grep 'noise\|vanish'
loopwise survey --repeats 5 trefoil.txt 2>&1
loopwise survey --noise 1 --structure trefoil.txt 2>&1
