loopwise survey --csv trefoil.txt
loopwise survey --json --svg picture.svg trefoil.txt
cat picture.svg
