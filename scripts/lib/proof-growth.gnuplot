# The time of one fault's check over the number of channels, in a proof and on a real tester: proof-growth.dat of `folder`,
# drawn into `output`.
set terminal svg size 640,420 font "sans,12" background "white"
set output output
set logscale xy
set xtics (48, 96, 240, 480)
set xrange [40:580]
set xlabel "channels"
set ylabel "time of one check, ms"
set grid
set key top left
data = folder . "/proof-growth.dat"
plot data using 1:2 with linespoints title "proved", data using 1:3 with linespoints title "on a real tester, at least"
