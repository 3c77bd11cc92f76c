loopwise knot trefoil.txt
loopwise knot --open 3 trefoil.txt none.txt
echo "-> $?"
printf '1 0 0 0\n2 1 0 0\n3 2 0 1\n4 1 0 0\n' >touching.txt
loopwise knot touching.txt
printf '1 0 0 0\n2 1 0 0\n3 2 0 1\n' >three.txt
loopwise knot three.txt
echo "-> $?"
loopwise survey --each each.csv --method direction --count 3 --seed 1 trefoil.txt
cat each.csv
