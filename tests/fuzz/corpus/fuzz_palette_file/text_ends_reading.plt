1,2,3
4,5,6
end of colours
7,8,9
