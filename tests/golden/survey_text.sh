loopwise survey --threads 1 trefoil.txt
loopwise survey --threads 2 --first 20 --last 110 trefoil.txt
loopwise survey --method two-points --count 50 --seed 7 --threads 2 trefoil.txt
loopwise survey --method outside trefoil.txt
