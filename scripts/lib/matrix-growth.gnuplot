# The work on the matrix over the number of channels: matrix-growth.dat of `folder`, drawn into `output`.
set terminal svg size 640,420 font "sans,12" background "white"
set output output
set logscale xy
set xtics (48, 96, 240, 480, 960)
set xrange [40:1150]
set xlabel "channels"
set ylabel "time, 48 channels = 1"
set grid
set key top left
data = folder . "/matrix-growth.dat"
plot for [column = 2:5] data using 1:column with linespoints title columnheader(column), \
  (x / 48.0) ** 2 with lines dashtype 2 linecolor "gray" title "square of the channels"
